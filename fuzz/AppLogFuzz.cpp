// A log file from any bytes: every message can be shown, nothing is lost, and what is written again is read
// back as it was.
#include "Require.h"
#include "applog/AppLogFile.h"
#include "applog/AppLogLine.h"

#include <string>
#include <utility>
#include <vector>

namespace {

std::vector<std::wstring> ReadLines(std::string bytes)
{
    CKvAppLogFile file;
    file.OpenBytes(std::move(bytes));
    std::vector<std::wstring> lines;
    SKvAppLogMsgData data{};
    while (file.ReadLogData(data)) {
        Require(kv::IsAppLogType(data.type), "a type is one digit");
        Require(data.time.wYear >= 1900 && data.time.wMonth - 1u < 12 && data.time.wDay - 1u < 31,
                "a time can be shown");
        lines.push_back(kv::AppLogLineText(std::to_wstring(data.type), kv::AppLogLevelText(data.level),
                                           kv::AppLogTimeText(data.time), kv::AppLogText(data)));
    }
    return lines;
}

std::string Write(const std::vector<std::wstring>& lines)
{
    kv::AppLogFileText text;
    for (const std::wstring& line : lines)
        text.Add(line);
    return text.Bytes();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::vector<std::wstring> lines = ReadLines(bytes);
    Require(!lines.empty() || bytes.find_first_not_of("\xEF\xBB\xBF\xFF\xFE") == std::string::npos,
            "only byte order marks hold no message");
    const std::string written = Write(lines);
    const std::vector<std::wstring> again = ReadLines(written);
    Require(again.size() == lines.size(), "as many messages come back");
    Require(Write(again) == written, "what was written comes back");
    return 0;
}
