#include "tools/KvGroupInput.h"

#include "core/FilePath.h"
#include "core/Text.h"
#include "core/WholeFile.h"
#include "naming/DefaultRules.h"
#include "tools/KvGroupSystem.h"

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <new>
#include <string_view>
#include <system_error>

namespace kv {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF"; // of UTF-8
constexpr std::size_t kMaxRuleFile = std::size_t{64} << 20; // the rule loader reads no larger one

// A link that leads nowhere or in a circle, or a file that has just gone, is no file.
bool MeansNoFile(const std::error_code& code)
{
    return code == std::errc::no_such_file_or_directory || code == std::errc::not_a_directory ||
           code == std::errc::too_many_symbolic_link_levels;
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
    std::filesystem::directory_iterator entry(ToPath(FromFileName(folder)), code);
    for (; !code && entry != std::filesystem::directory_iterator(); entry.increment(code)) {
        std::error_code unknown;
        if (entry->is_regular_file(unknown))
            names.Add(FromPath(entry->path().filename()));
        if (unknown && !MeansNoFile(unknown)) {
            error = "cannot tell what '" + ToFileName(FromPath(entry->path())) + "' is: " + unknown.message();
            return false;
        }
    }
    if (code)
        error = "cannot read '" + folder + "': " + code.message();
    return !code;
}

bool ReadNames(std::FILE* list, MediaNames& names, std::string& error)
{
    std::string block;
    std::string pending; // the start of a line whose end is still to come
    std::size_t lines = 0;
    bool isUtf16 = false;
    const auto add = [&](std::string_view line) {
        if (++lines == 1) {
            isUtf16 = line.starts_with("\xFF\xFE") || line.starts_with("\xFE\xFF");
            line.remove_prefix(line.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0);
        }
        if (!AddLine(line, names))
            error = isUtf16 ? "standard input is UTF-16; give the names in UTF-8"
                            : "standard input: line " + std::to_string(lines) + " holds a zero byte";
        return error.empty();
    };
    errno = 0;
    while (ReadText(list, block)) {
        std::string_view rest(block);
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
    // a file means that file. One that has the same time before and after was there in between.
    const std::wstring path = FromFileName(*file);
    std::error_code code;
    const bool isFile = std::filesystem::is_regular_file(ToPath(path), code);
    const auto before =
        isFile ? std::filesystem::last_write_time(ToPath(path), code) : std::filesystem::file_time_type();
    if (code || !isFile) {
        error =
            code ? "cannot read '" + *file + "': " + code.message() : "'" + *file + "' is no regular file";
        return nullptr;
    }
    IKvFileNamingRuleCollection* loaded = nullptr;
    if (!KvLoadFileNamingCollection(path.c_str(), &loaded, nullptr))
        throw std::bad_alloc();
    Reference<IKvFileNamingRuleCollection> rules(loaded);
    if (std::filesystem::last_write_time(ToPath(path), code) != before)
        error = "'" + *file + "' has changed while it was read";
    else if (rules->GetRuleCount() > 0)
        return rules;
    else if (ReadWholeFile(path, &error, kMaxRuleFile))
        error = "'" + *file + "' holds no naming rules";
    return nullptr;
}

bool WriteBuiltInRules(const std::string& file, std::string& error)
{
    const std::wstring path = FromFileName(file);
    const NewFile made = CreateEmptyFile(path, &error);
    if (made == NewFile::IsThere)
        error = "'" + file + "' is there already and stays as it is";
    if (made != NewFile::Made)
        return false;
    if (KvSaveFileNamingCollection(path.c_str(), BuiltInRules().get(), nullptr))
        return true;
    std::error_code left;
    std::filesystem::remove(ToPath(path), left);
    error = "cannot write '" + file + "'";
    return false;
}

} // namespace kv
