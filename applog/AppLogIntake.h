// Messages on their way into the log. Pure.
//
// A full log falls back to its newest quarter, so that of many messages that wait most would be added only to
// go again. Those are left out: what becomes of the log depends on them only by their number and their days.
#pragma once

#include "applog/AppLogLine.h"

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

namespace kv {

/// A message, no larger than its text.
struct AppLogMessage
{
    int type;
    WORD level;
    SYSTEMTIME time;
    std::wstring text;
};

/// So many messages in a row of one day of the month.
struct AppLogRun
{
    SYSTEMTIME time;
    std::size_t count;
};

/// Messages in their order.
class AppLogBatch
{
public:
    /// Keeps the newest `most` messages, the others as runs alone.
    void Add(AppLogMessage message, std::size_t most);
    bool IsEmpty() const { return m_messages.empty(); }
    const std::vector<AppLogRun>& Runs() const { return m_runs; } ///< before the messages
    std::deque<AppLogMessage>& Messages() { return m_messages; }

private:
    std::vector<AppLogRun> m_runs;
    std::deque<AppLogMessage> m_messages;
};

/// What is still to be added.
class AppLogIntake
{
public:
    struct Entry
    {
        AppLogMessage message;
        bool isNewDay; ///< a date line comes before it
        bool trims;    ///< the log falls back to its quarter behind it
    };

    /// Takes messages in behind those that wait. Adding all entries then leaves the lines that adding each
    /// message would leave.
    /// @param batch of more messages than `maximum` it may hold the newest `maximum` alone.
    /// @param count of the lines that are there. @param last the time of the message before.
    void Plan(AppLogBatch batch, int count, int maximum, const SYSTEMTIME& last);
    bool IsEmpty() const { return m_entries.empty(); }
    Entry Take();

private:
    Entry Next(AppLogMessage message, int maximum);

    std::deque<Entry> m_entries;
    int m_count = 0;     ///< lines when all entries are added
    SYSTEMTIME m_last{}; ///< of the last message then
};

} // namespace kv
