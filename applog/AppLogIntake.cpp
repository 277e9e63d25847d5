#include "applog/AppLogIntake.h"

#include <algorithm>
#include <utility>

namespace kv {

void AppLogTally::Add(int lines)
{
    if (m_maximum <= 1)
        return; // one line whatever comes
    if (m_ends.empty())
        m_ends.push_back(true);
    m_ends.resize(m_ends.size() + static_cast<std::size_t>(lines) - 1, false);
    m_ends.push_back(true);
    if (static_cast<int>(m_ends.size()) <= m_maximum)
        return;
    // Folded once in a maximum of lines, which costs no more than they did.
    std::vector<int> folded(static_cast<std::size_t>(m_maximum));
    for (std::size_t count = 0; count < folded.size(); ++count)
        folded[count] = After(static_cast<int>(count));
    m_folded = std::move(folded);
    m_ends.clear();
}

int AppLogTally::After(int count) const
{
    return AfterRest(m_folded.empty() ? count : m_folded[static_cast<std::size_t>(count)]);
}

int AppLogTally::AfterRest(int count) const
{
    const int lines = static_cast<int>(m_ends.size()) - 1;
    if (lines <= 0)
        return count;
    const int keep = AppLogLinesToKeep(m_maximum);
    // The log falls back behind the first message that ends at its maximum or beyond.
    int at = 0;
    for (int next = m_maximum - count; next <= lines; next = at + m_maximum - keep) {
        at = m_ends[static_cast<std::size_t>(next)] ? next : next + 1;
        count = keep;
    }
    return count + lines - at;
}

void AppLogBatch::Add(AppLogMessage message)
{
    m_messages.push_back(std::move(message));
    if (m_messages.size() <= static_cast<std::size_t>(std::max(m_maximum, 1)))
        return;
    const SYSTEMTIME& time = m_messages.front().time;
    if (m_others)
        m_tally.Add(IsNewAppLogDay(m_others->last, time) ? 2 : 1);
    m_others = {m_others ? m_others->first : time, time};
    m_messages.pop_front();
}

AppLogIntake::Entry AppLogIntake::Next(AppLogMessage message, int maximum)
{
    const bool isNewDay = IsNewAppLogDay(m_last, message.time);
    m_last = message.time;
    m_count += isNewDay ? 2 : 1;
    const int gone = AppLogLinesToTrim(m_count, maximum);
    m_count -= gone;
    return {std::move(message), isNewDay, gone > 0 ? m_count : 0};
}

void AppLogIntake::Plan(AppLogBatch batch, int count, const SYSTEMTIME& last, Leave leave)
{
    if (m_entries.empty()) {
        m_count = count;
        m_last = last;
    }
    const int maximum = batch.Maximum();
    if (batch.Dropped()) {
        Next({0, 0, batch.Dropped()->first, {}}, maximum);
        m_count = batch.Tally().After(m_count);
        m_last = batch.Dropped()->last;
    }
    for (AppLogMessage& message : batch.Messages())
        m_entries.push_back(Next(std::move(message), maximum));
    if (leave == Leave::kWhatCounts || static_cast<int>(m_entries.size()) > maximum)
        DropWhatGoes();
}

// Before the last time that the log falls back, what is not among the lines that it keeps then.
void AppLogIntake::DropWhatGoes()
{
    const auto last = std::find_if(m_entries.rbegin(), m_entries.rend(),
                                   [](const Entry& entry) { return entry.keeps > 0; });
    auto kept = last.base();
    for (int lines = 0; kept != m_entries.begin() && lines < last->keeps;)
        lines += (--kept)->isNewDay ? 2 : 1;
    if (last != m_entries.rend())
        m_entries.erase(m_entries.begin(), kept);
}

AppLogIntake::Entry AppLogIntake::Take()
{
    Entry entry = std::move(m_entries.front());
    m_entries.pop_front();
    return entry;
}

} // namespace kv
