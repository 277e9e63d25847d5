// kv_texts: writes all texts as a file to translate, or tells what files of translations lack.
#include "core/ProfileDocument.h"
#include "core/Text.h"
#include "core/WholeFile.h"
#include "tools/texts/TextFile.h"
#include "window/TextTable.h"

#include <cstdio>
#include <cstring>

namespace {

std::vector<kv::TextItem> AllTexts()
{
    std::vector<kv::TextItem> items = kv::LibraryTexts();
    for (const KvStringEntry& entry : titler::OwnTexts())
        items.push_back({L"Strings", std::to_wstring(entry.number), entry.text});
    return items;
}

// False when the file is not complete and right.
bool CheckFile(const char* name, const std::vector<kv::TextItem>& items)
{
    std::string error;
    const auto bytes = kv::ReadWholeFile(kv::FromFileName(name), &error, kv::ProfileDocument::kMostBytes);
    if (!bytes) {
        std::fprintf(stderr, "%s: %s\n", name, error.c_str());
        return false;
    }
    const std::vector<std::string> faults = kv::CheckTextFile(items, *bytes);
    for (const std::string& fault : faults)
        std::printf("%s: %s\n", name, fault.c_str());
    std::printf("%s: %zu texts, %zu faults\n", name, items.size(), faults.size());
    return faults.empty();
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<kv::TextItem> items = AllTexts();
    if (argc < 2) {
        std::fputs(kv::MakeTextFile(items).c_str(), stdout);
        return 0;
    }
    if (std::strcmp(argv[1], "--help") == 0) {
        std::puts("kv_texts            writes all texts in English, a file to translate\n"
                  "kv_texts FILE.ini…  tells what is missing or wrong in files of translations");
        return 0;
    }
    bool areGood = true;
    for (int i = 1; i < argc; ++i)
        areGood = CheckFile(argv[i], items) && areGood;
    return areGood ? 0 : 1;
}
