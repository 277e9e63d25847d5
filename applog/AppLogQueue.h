// Messages on their way from any thread to the log. Pure.
#pragma once

#include "applog/AppLogLine.h"

#include <mutex>
#include <string>
#include <utility>
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

class AppLogQueue
{
public:
    /// @return true when it was empty: whoever takes it must be woken.
    bool Push(AppLogMessage message)
    {
        const std::lock_guard lock(m_mutex);
        m_messages.push_back(std::move(message));
        return m_messages.size() == 1;
    }
    std::vector<AppLogMessage> TakeAll()
    {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_messages, {});
    }

private:
    std::mutex m_mutex;
    std::vector<AppLogMessage> m_messages;
};

} // namespace kv
