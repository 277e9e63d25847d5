// The log as a file. Pure.
//
// UTF-8 without a byte order mark, a line each, "\n" behind each (on Windows "\r\n"):
//
//     [type][level][time][text]
//
// A line break inside a text becomes one of the file with a tab behind it. Date lines and spacers are not
// written. Reading drops nothing: what is no such line becomes a message of type 0 and level 0 with the
// whole line as its text.
#pragma once

#include "KvTypes.h"

#include <optional>
#include <string>
#include <string_view>

/// Reads a log file, message by message. UTF-8 and UTF-16 with a byte order mark are read, too.
class CKvAppLogFile
{
public:
    CKvAppLogFile();

    /// Reads a file. @return 1; 0, as after `CloseLog`, for null, an empty path, a folder and whatever cannot
    /// be read.
    int OpenLog(const wchar_t* path);
    /// The same for the bytes of a file.
    void OpenBytes(std::string bytes);
    /// Reads the next message. A text above 512 characters becomes several messages of 512 with the same
    /// type, level and time, the rest last. An odd line has the time of the message before it, at first the
    /// zero time. A zero in a text becomes U+FFFD. @return 1; 0 at the end, with `data` as it was.
    int ReadLogData(SKvAppLogMsgData& data);
    void CloseLog();

private:
    std::optional<std::string_view> NextLine();
    bool ReadMessage();

    std::string m_bytes;
    std::size_t m_at = 0; ///< of the next line in the bytes
    SKvAppLogMsgData m_head;
    std::wstring m_text;    ///< the message's whole text
    std::size_t m_told = 0; ///< how much of it was given out
};

namespace kv {

/// Collects lines, as `AppLogLineText` makes them, into the bytes of a log file.
class AppLogFileText
{
public:
    void Add(std::wstring_view line);
    const std::string& Bytes() const { return m_bytes; }

private:
    std::string m_bytes;
};

} // namespace kv
