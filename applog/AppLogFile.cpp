#include "applog/AppLogFile.h"

#include "applog/AppLogLine.h"
#include "core/CodePoints.h"
#include "core/ProfileLine.h"
#include "core/Text.h"
#include "core/WholeFile.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

#if defined(_WIN32)
constexpr std::string_view kLineEnd = "\r\n";
#else
constexpr std::string_view kLineEnd = "\n";
#endif

/// Takes a line apart from its start.
class LineReader
{
public:
    explicit LineReader(std::wstring_view line) : m_rest(line) {}

    bool Take(wchar_t character)
    {
        if (!m_rest.starts_with(character))
            return false;
        m_rest.remove_prefix(1);
        return true;
    }
    /// At least `least` and at most `most` digits, and a value in the range.
    bool Number(WORD& value, std::size_t least, std::size_t most, int minimum, int maximum)
    {
        int number = 0;
        std::size_t digits = 0;
        for (; digits < most && digits < m_rest.size() && m_rest[digits] >= L'0' && m_rest[digits] <= L'9';
             ++digits)
            number = number * 10 + (m_rest[digits] - L'0');
        m_rest.remove_prefix(digits);
        value = static_cast<WORD>(number);
        return digits >= least && number >= minimum && number <= maximum;
    }
    bool Fixed(WORD& value, std::size_t digits, int minimum, int maximum)
    {
        return Number(value, digits, digits, minimum, maximum);
    }
    std::wstring_view Rest() const { return m_rest; }

private:
    std::wstring_view m_rest;
};

bool ReadTime(LineReader& line, SYSTEMTIME& time)
{
    using namespace std::chrono;
    const bool isRead =
        line.Number(time.wYear, 4, 5, 1900, 65535) && line.Take(L'/') && line.Fixed(time.wMonth, 2, 1, 12) &&
        line.Take(L'/') && line.Fixed(time.wDay, 2, 1, 31) && line.Take(L'-') &&
        line.Fixed(time.wHour, 2, 0, 23) && line.Take(L':') && line.Fixed(time.wMinute, 2, 0, 59) &&
        line.Take(L':') && line.Fixed(time.wSecond, 2, 0, 59) && line.Take(L'.') &&
        line.Fixed(time.wMilliseconds, 3, 0, 999);
    // The calendar repeats after 400 years.
    const year_month_day date = year{2000 + time.wYear % 400} / int{time.wMonth} / int{time.wDay};
    if (!isRead || !date.ok())
        return false;
    time.wDayOfWeek = static_cast<WORD>(weekday(sys_days(date)).c_encoding());
    return true;
}

/// @param text receives what stands between the last brackets; a view into `line`.
bool ReadLine(std::wstring_view line, SKvAppLogMsgData& head, std::wstring_view& text)
{
    LineReader reader(line);
    WORD type = 0;
    const bool isRead = reader.Take(L'[') && reader.Fixed(type, 1, 0, 9) && reader.Take(L']') &&
                        reader.Take(L'[') && reader.Number(head.level, 1, 5, 0, 65535) && reader.Take(L']') &&
                        reader.Take(L'[') && ReadTime(reader, head.time) && reader.Take(L']') &&
                        reader.Take(L'[');
    if (!isRead || !reader.Rest().ends_with(L']'))
        return false;
    head.type = type;
    text = reader.Rest().substr(0, reader.Rest().size() - 1);
    return true;
}

} // namespace

CKvAppLogFile::CKvAppLogFile()
{
    CloseLog();
}

void CKvAppLogFile::CloseLog()
{
    OpenBytes({});
}

int CKvAppLogFile::OpenLog(const wchar_t* path)
{
    CloseLog();
    std::optional<std::string> bytes = path ? kv::ReadWholeFile(path) : std::nullopt;
    if (!bytes)
        return 0;
    OpenBytes(std::move(*bytes));
    return 1;
}

void CKvAppLogFile::OpenBytes(std::string bytes)
{
    m_bytes = std::move(bytes);
    if (m_bytes.starts_with("\xFF\xFE") || m_bytes.starts_with("\xFE\xFF"))
        m_bytes = kv::DecodeProfile(m_bytes);
    m_at = m_bytes.starts_with(kv::kUtf8Bom) ? kv::kUtf8Bom.size() : 0;
    m_head = {};
    m_head.time = kv::kAppLogZeroTime;
    m_text.clear();
    m_told = 0;
}

// Without its line end.
std::optional<std::string_view> CKvAppLogFile::NextLine()
{
    if (m_at >= m_bytes.size())
        return std::nullopt;
    const std::size_t end = std::min(m_bytes.find('\n', m_at), m_bytes.size());
    std::string_view line = std::string_view(m_bytes).substr(m_at, end - m_at);
    m_at = end + 1;
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

bool CKvAppLogFile::ReadMessage()
{
    const auto first = NextLine();
    if (!first)
        return false;
    std::string bytes(*first);
    const std::size_t firstEnd = kv::FromUtf8(bytes).size();
    while (m_at < m_bytes.size() && m_bytes[m_at] == '\t')
        (bytes += '\n') += NextLine()->substr(1);
    std::wstring line = kv::FromUtf8(bytes);
    std::replace(line.begin(), line.end(), L'\0', static_cast<wchar_t>(kv::kReplacementCharacter));

    SKvAppLogMsgData head = m_head;
    std::wstring_view text;
    if (ReadLine(line, head, text)) {
        m_text = text;
    } else if (ReadLine(std::wstring_view(line).substr(0, firstEnd), head, text)) {
        // Something else went on behind a whole line.
        m_text = std::wstring(text).append(line, firstEnd);
    } else {
        head = m_head;
        head.type = 0;
        head.level = 0;
        m_text = std::move(line);
    }
    m_head = head;
    m_told = 0;
    return true;
}

int CKvAppLogFile::ReadLogData(SKvAppLogMsgData& data)
{
    if (m_told >= m_text.size() && !ReadMessage())
        return 0;
    const std::wstring_view rest = std::wstring_view(m_text).substr(m_told);
    const std::wstring_view part = rest.substr(0, kv::CutLength(rest, kv::kAppLogMostText));
    m_told += part.size();
    data.type = m_head.type;
    data.level = m_head.level;
    data.time = m_head.time;
    kv::SetAppLogText(data, part);
    return 1;
}

namespace kv {

void AppLogFileText::Add(std::wstring_view line)
{
    while (true) {
        const std::size_t end = std::min(line.find_first_of(L"\r\n"), line.size());
        m_bytes += ToUtf8(line.substr(0, end));
        m_bytes += kLineEnd;
        if (end == line.size())
            return;
        m_bytes += '\t';
        line.remove_prefix(end + (line.substr(end).starts_with(L"\r\n") ? 2 : 1));
    }
}

} // namespace kv
