#include "applog/AppLogLine.h"

#include <algorithm>
#include <chrono>
#include <iterator>

namespace kv {

namespace {

constexpr int kFirstYear = 1900;

void AppendNumber(std::wstring& out, unsigned value, std::size_t digits)
{
    const std::wstring text = std::to_wstring(value);
    out.append(digits > text.size() ? digits - text.size() : 0, L'0').append(text);
}

// Any day and month: those beyond the end run on into the next month and year.
unsigned WeekdayOf(const SYSTEMTIME& time)
{
    using namespace std::chrono;
    // The calendar repeats after 400 years, weekdays included.
    const year_month month = year{2000 + time.wYear % 400} / January + months{time.wMonth - 1};
    return weekday(sys_days(month / 1) + days{time.wDay - 1}).c_encoding();
}

void AppendDate(std::wstring& out, const SYSTEMTIME& time)
{
    AppendNumber(out, time.wYear, 4);
    AppendNumber(out += L'/', time.wMonth, 2);
    AppendNumber(out += L'/', time.wDay, 2);
}

const SYSTEMTIME& Shown(const SYSTEMTIME& time)
{
    return time.wYear < kFirstYear ? kAppLogZeroTime : time;
}

} // namespace

int AppLogTypeOf(std::wstring_view typeText)
{
    return typeText.size() == 1 && typeText[0] >= L'0' && typeText[0] <= L'9' ? typeText[0] - L'0' : -1;
}

std::wstring AppLogDateText(const SYSTEMTIME& time)
{
    static constexpr std::wstring_view days[] = {L"Sunday",   L"Monday", L"Tuesday", L"Wednesday",
                                                 L"Thursday", L"Friday", L"Saturday"};
    const SYSTEMTIME& shown = Shown(time);
    std::wstring text;
    AppendDate(text, shown);
    return text.append(L" - ").append(days[WeekdayOf(shown)]);
}

std::wstring AppLogTimeText(const SYSTEMTIME& time)
{
    const SYSTEMTIME& shown = Shown(time);
    std::wstring text;
    text.reserve(24);
    AppendDate(text, shown);
    AppendNumber(text += L'-', shown.wHour, 2);
    AppendNumber(text += L':', shown.wMinute, 2);
    AppendNumber(text += L':', shown.wSecond, 2);
    AppendNumber(text += L'.', time.wMilliseconds, 3);
    return text;
}

std::wstring AppLogLevelText(WORD level)
{
    std::wstring text;
    AppendNumber(text, level, 2);
    return text;
}

std::wstring_view AppLogText(const SKvAppLogMsgData& message)
{
    const wchar_t* end = std::find(std::begin(message.text), std::end(message.text), L'\0');
    return {message.text, static_cast<std::size_t>(end - message.text)};
}

void SetAppLogText(SKvAppLogMsgData& message, std::wstring_view text)
{
    const std::size_t length = text.copy(message.text, kAppLogMostText);
    if (length < kAppLogMostText)
        message.text[length] = L'\0';
}

std::wstring AppLogLineText(std::wstring_view type, std::wstring_view level, std::wstring_view time,
                            std::wstring_view text)
{
    std::wstring line;
    line.reserve(type.size() + level.size() + time.size() + text.size() + 8);
    for (const std::wstring_view part : {type, level, time, text})
        (line += L'[').append(part) += L']';
    return line;
}

bool AppLogDates::IsSameDate(const SYSTEMTIME& next) const
{
    return separator.wYear > 0 && separator.wYear == next.wYear && separator.wMonth == next.wMonth &&
           separator.wDay == next.wDay;
}

int AppLogLinesToKeep(int maximum)
{
    return std::max(1, maximum / 4);
}

int AppLogLinesToTrim(int count, int maximum)
{
    if (count < maximum)
        return 0;
    return std::max(0, count - AppLogLinesToKeep(maximum));
}

} // namespace kv
