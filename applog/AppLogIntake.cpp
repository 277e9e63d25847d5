#include "applog/AppLogIntake.h"

#include <algorithm>
#include <utility>

namespace kv {

namespace {

bool AreOfOneDay(const SYSTEMTIME& a, const SYSTEMTIME& b)
{
    return a.wDay == b.wDay && (a.wYear > 0) == (b.wYear > 0);
}

} // namespace

void AppLogBatch::Add(AppLogMessage message, std::size_t most)
{
    m_messages.push_back(std::move(message));
    for (; m_messages.size() > std::max<std::size_t>(most, 1); m_messages.pop_front()) {
        const SYSTEMTIME& time = m_messages.front().time;
        if (!m_runs.empty() && AreOfOneDay(m_runs.back().time, time))
            ++m_runs.back().count;
        else
            m_runs.push_back({time, 1});
    }
}

AppLogIntake::Entry AppLogIntake::Next(AppLogMessage message, int maximum)
{
    const bool isNewDay = IsNewAppLogDay(m_last, message.time);
    m_last = message.time;
    m_count += isNewDay ? 2 : 1;
    const int gone = AppLogLinesToTrim(m_count, maximum);
    m_count -= gone;
    return {std::move(message), isNewDay, gone > 0};
}

void AppLogIntake::Plan(AppLogBatch batch, int count, int maximum, const SYSTEMTIME& last)
{
    if (m_entries.empty()) {
        m_count = count;
        m_last = last;
    }
    for (const AppLogRun& run : batch.Runs()) {
        for (std::size_t i = 0; i < run.count; ++i)
            Next({0, 0, run.time, {}}, maximum);
    }
    std::size_t trimmed = 0; // the entries up to the last trimming
    for (AppLogMessage& message : batch.Messages()) {
        m_entries.push_back(Next(std::move(message), maximum));
        trimmed = m_entries.back().trims ? m_entries.size() : trimmed;
    }
    int lines = 0;
    while (trimmed > 0 && lines < AppLogLinesToKeep(maximum))
        lines += m_entries[--trimmed].isNewDay ? 2 : 1;
    m_entries.erase(m_entries.begin(), m_entries.begin() + static_cast<std::ptrdiff_t>(trimmed));
}

AppLogIntake::Entry AppLogIntake::Take()
{
    Entry entry = std::move(m_entries.front());
    m_entries.pop_front();
    return entry;
}

} // namespace kv
