// What a log line says and how the lines of a log follow one another. Pure.
#pragma once

#include "KvTypes.h"

#include <string>
#include <string_view>

namespace kv {

inline constexpr int kAppLogTypes = 10;
inline constexpr std::size_t kAppLogMostText = 512;
inline constexpr DWORD kAppLogAllTypes = (1u << kAppLogTypes) - 1; ///< a bit a type

/// The columns of a log.
enum AppLogColumn : int
{
    kAppLogType = 0,
    kAppLogLevel = 1,
    kAppLogTime = 2,
    kAppLogContent = 3,
};

// Heights of the lines that are no messages, in logical pixels; these are as high as the list makes them.
inline constexpr int kAppLogDateHeight = 48;
inline constexpr int kAppLogSpacerHeight = 12;

/// The text in the type column tells the kinds of lines apart.
inline constexpr std::wstring_view kAppLogDateMark = L"#";

/// The type of a message line; -1 for a date line and a spacer.
int AppLogTypeOf(std::wstring_view typeText);

/// True for 0 … 9.
constexpr bool IsAppLogType(int type)
{
    return type >= 0 && type < kAppLogTypes;
}

/// What stands for a time that there is none: 1970/01/01, 00:00:00.
inline constexpr SYSTEMTIME kAppLogZeroTime{1970, 1, 4, 1, 0, 0, 0, 0};

/// "2016/03/01 - Tuesday", the weekday in English and reckoned from the date. A year below 1900 gives the
/// zero time's.
std::wstring AppLogDateText(const SYSTEMTIME& time);
/// "2016/03/01-09:05:07.042"; a year below 1900 gives the zero time with the milliseconds of this one.
std::wstring AppLogTimeText(const SYSTEMTIME& time);
/// At least two digits.
std::wstring AppLogLevelText(WORD level);
/// Up to the terminating zero, at most 512 characters.
std::wstring_view AppLogText(const SKvAppLogMsgData& message);
/// Stores the first 512 characters.
void SetAppLogText(SKvAppLogMsgData& message, std::wstring_view text);

/// "[type][level][time][text]".
std::wstring AppLogLineText(std::wstring_view type, std::wstring_view level, std::wstring_view time,
                            std::wstring_view text);

/// True when a message begins another day than the one before. Only the day of the month counts; year 0 is
/// no time.
constexpr bool IsNewAppLogDay(const SYSTEMTIME& before, const SYSTEMTIME& next)
{
    return before.wYear > 0 && before.wDay != next.wDay;
}

/// What a log remembers of its dates. The two are independent of one another.
struct AppLogDates
{
    SYSTEMTIME separator{}; ///< of the last date line that a host asked for; year 0 before
    SYSTEMTIME message{};   ///< of the last message

    /// True when a host asks for the same date again.
    bool IsSameDate(const SYSTEMTIME& next) const;
};

/// What a full log falls back to: a quarter of its maximum, so that this happens rarely, one line at least.
int AppLogLinesToKeep(int maximum);
/// How many of the oldest lines go then. 0 below the maximum.
int AppLogLinesToTrim(int count, int maximum);

} // namespace kv
