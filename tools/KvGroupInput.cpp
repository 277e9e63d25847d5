#include "tools/KvGroupInput.h"

#include "core/KvFileUtils.h"
#include "core/Text.h"
#include "core/WholeFile.h"
#include "naming/DefaultRules.h"

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <new>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <vector>

namespace kv {
namespace {

constexpr std::size_t kMaxRuleFile = std::size_t{64} << 20; // the rule loader reads no larger one

// The system's file names are wide already on some systems.
template <typename Character>
std::wstring ToWide(const std::basic_string<Character>& name)
{
    if constexpr (std::is_same_v<Character, wchar_t>)
        return name;
    else
        return FromFileName(name);
}

// @param line without its line feed.
bool AddLine(std::string_view line, MediaNames& names)
{
    if (line.find('\0') != std::string_view::npos)
        return false;
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    names.Add(FromFileName(line.substr(line.find_last_of("\\/") + 1))); // no folder: npos + 1 is 0
    return true;
}

Reference<IKvFileNamingRuleCollection> BuiltInRules()
{
    IKvFileNamingRuleCollection* created = nullptr;
    if (!CreateFileNamingRuleCollection(&created))
        throw std::bad_alloc();
    Reference<IKvFileNamingRuleCollection> rules(created);
    if (!AddDefaultRules(*rules))
        throw std::bad_alloc();
    return rules;
}

} // namespace

bool ReadFolder(const std::string& folder, MediaNames& names, std::string& error)
{
    std::error_code code;
    std::filesystem::directory_iterator entry(folder, code);
    for (; !code && entry != std::filesystem::directory_iterator(); entry.increment(code)) {
        // A link that leads nowhere, or a file that has just gone, is no file.
        std::error_code gone;
        if (entry->is_regular_file(gone))
            names.Add(ToWide(entry->path().filename().native()));
    }
    if (code)
        error = "cannot read '" + folder + "': " + code.message();
    return !code;
}

bool ReadNames(std::FILE* list, MediaNames& names, std::string& error)
{
    std::vector<char> block(std::size_t{1} << 16);
    std::string pending; // the start of a line whose end is still to come
    std::size_t lines = 1;
    const auto add = [&](std::string_view line) {
        if (!AddLine(line, names))
            error = "standard input: line " + std::to_string(lines) + " holds a zero byte";
        ++lines;
        return error.empty();
    };
    errno = 0;
    while (const std::size_t size = std::fread(block.data(), 1, block.size(), list)) {
        std::string_view rest(block.data(), size);
        for (std::size_t end = rest.find('\n'); end != std::string_view::npos; end = rest.find('\n')) {
            pending += rest.substr(0, end);
            rest.remove_prefix(end + 1);
            if (!add(pending))
                return false;
            pending.clear();
        }
        pending += rest;
    }
    if (std::ferror(list))
        error = "cannot read standard input: " + std::generic_category().message(errno);
    return error.empty() && add(pending);
}

Reference<IKvFileNamingRuleCollection> LoadRules(const std::string* file, std::string& error)
{
    if (!file)
        return BuiltInRules();
    // The loader takes a missing file for a new user's and a broken one for an empty one; somebody who names
    // a file means that file.
    const std::wstring path = FromFileName(*file);
    if (!ReadWholeFile(path, &error, kMaxRuleFile))
        return nullptr;
    IKvFileNamingRuleCollection* loaded = nullptr;
    if (!KvLoadFileNamingCollection(path.c_str(), &loaded, nullptr))
        throw std::bad_alloc();
    Reference<IKvFileNamingRuleCollection> rules(loaded);
    if (rules->GetRuleCount() > 0)
        return rules;
    error = "'" + *file + "' holds no naming rules";
    return nullptr;
}

bool WriteBuiltInRules(const std::string& file, std::string& error)
{
    const std::wstring path = FromFileName(file);
    std::error_code code;
    if (KvFileUtils::DoesFileExist(path.c_str()) && !std::filesystem::is_empty(file, code)) {
        error = "'" + file + "' is there already and stays as it is";
        return false;
    }
    if (KvSaveFileNamingCollection(path.c_str(), BuiltInRules().get(), nullptr))
        return true;
    error = "cannot write '" + file + "'";
    return false;
}

} // namespace kv
