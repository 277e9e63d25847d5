// Messages on their way into the log. Pure.
//
// A full log falls back to its newest quarter, so that of many messages that wait most would be added only to
// go again. Those are left out: what becomes of the log depends on them only by their number and their days.
#pragma once

#include "applog/AppLogLine.h"

#include <cstddef>
#include <deque>
#include <optional>
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

/// What many messages make of a log's count of lines, whatever count it has before them. It takes no more
/// room the more they are.
class AppLogTally
{
public:
    explicit AppLogTally(int maximum) : m_maximum(maximum) {}

    /// A message comes: so many lines, 1 or 2 with its date line.
    void Add(int lines);
    /// How many lines there are behind all messages, of that many before. @param count as a message leaves
    /// it.
    int After(int count) const;

private:
    int AfterRest(int count) const;

    int m_maximum;
    std::vector<int> m_folded; ///< by the count before; empty as long as nothing was folded
    // What came since. `m_ends[n]` tells whether a message ends n lines behind.
    std::vector<bool> m_ends;
};

/// Messages in their order, on the way into a log of that many lines at most.
class AppLogBatch
{
public:
    explicit AppLogBatch(int maximum) : m_maximum(maximum), m_tally(maximum) {}

    /// Keeps the newest messages, the maximum of them; of the others nothing but their days.
    void Add(AppLogMessage message);
    bool IsEmpty() const { return m_messages.empty(); }
    int Maximum() const { return m_maximum; }
    /// The messages before those that it keeps; the days of the first and the last one, none when there are
    /// none.
    struct Others
    {
        SYSTEMTIME first;
        SYSTEMTIME last;
    };
    const std::optional<Others>& Dropped() const { return m_others; }
    /// What the dropped ones but the first make of a count.
    const AppLogTally& Tally() const { return m_tally; }
    std::deque<AppLogMessage>& Messages() { return m_messages; }

private:
    int m_maximum;
    std::optional<Others> m_others;
    AppLogTally m_tally;
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
        int keeps;     ///< to how many lines the log falls back behind it; 0 when it does not
    };
    /// Which entries there are.
    enum class Leave
    {
        kWhatCounts, ///< those of which no line would be left are not added at all
        kAll,        ///< as long as no more than the maximum wait
    };

    /// Takes messages in behind those that wait. Adding all entries then leaves the lines that adding each
    /// message would leave.
    /// @param count of the lines that are there. @param last the time of the message before.
    void Plan(AppLogBatch batch, int count, const SYSTEMTIME& last, Leave leave);
    bool IsEmpty() const { return m_entries.empty(); }
    Entry Take();

private:
    Entry Next(AppLogMessage message, int maximum);
    void DropWhatGoes();

    std::deque<Entry> m_entries;
    int m_count = 0;     ///< lines when all entries are added
    SYSTEMTIME m_last{}; ///< of the last message then
};

} // namespace kv
