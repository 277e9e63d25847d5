#include "core/KvProfileFileUtils.h"

#include "core/CodePoints.h"
#include "core/KvFileUtils.h"
#include "core/ProfileDocument.h"
#include "core/Text.h"
#include "core/WholeFile.h"

#include <algorithm>

namespace KvProfileFileUtils {
namespace {

std::optional<kv::ProfileDocument> Read(const wchar_t* file)
{
    const auto bytes = kv::ReadWholeFile(file, nullptr, kv::ProfileDocument::kMostBytes);
    return bytes ? std::optional<kv::ProfileDocument>(*bytes) : std::nullopt;
}

std::optional<std::wstring> Find(const wchar_t* file, const wchar_t* section, const wchar_t* key)
{
    if (!file || !section || !key)
        return std::nullopt;
    const auto document = Read(file);
    return document ? document->Value(section, key) : std::nullopt;
}

} // namespace

int GetInt(const wchar_t* file, const wchar_t* section, const wchar_t* key, int defaultValue)
{
    if (!file || !section || !key)
        return defaultValue;
    const auto document = Read(file);
    return document ? document->Integer(section, key, defaultValue) : defaultValue;
}

int GetString(const wchar_t* file, const wchar_t* section, const wchar_t* key, wchar_t* buffer, int size,
              const wchar_t* defaultValue)
{
    if (!buffer || size <= 0)
        return 0;
    const std::wstring value = Find(file, section, key).value_or(defaultValue ? defaultValue : L"");
    const std::size_t length = kv::CutLength(value, static_cast<std::size_t>(size) - 1);
    std::copy_n(value.data(), length, buffer);
    buffer[length] = L'\0';
    return static_cast<int>(length);
}

int WriteInt(const wchar_t* file, const wchar_t* section, const wchar_t* key, int value)
{
    return WriteString(file, section, key, kv::NumberText(std::int64_t{value}).c_str());
}

int WriteString(const wchar_t* file, const wchar_t* section, const wchar_t* key, const wchar_t* value)
{
    if (!file || !section || !key || !value)
        return 0;
    auto document = Read(file);
    // What is there but cannot be read is not overwritten.
    if (!document && KvFileUtils::DoesFileExist(file))
        return 0;
    if (!document)
        document.emplace();
    if (!document->SetValue(section, key, value))
        return 0;
    const std::string bytes = document->Bytes();
    // Never what could not be read again.
    return bytes.size() <= kv::ProfileDocument::kMostBytes && kv::WriteWholeFile(file, bytes);
}

int WriteProfileVer(const wchar_t* file, int version)
{
    return WriteInt(file, kv::kProfileVersionSection, kv::kProfileVersionKey, version);
}

} // namespace KvProfileFileUtils
