// Messages from any thread to the log. Pure.
#pragma once

#include "applog/AppLogIntake.h"

#include <atomic>
#include <mutex>
#include <utility>

namespace kv {

class AppLogQueue
{
public:
    /// No more than that many are kept; see `AppLogBatch`.
    void SetMost(std::size_t most)
    {
        const std::lock_guard lock(m_mutex);
        m_most = most;
    }
    /// @return true when it was empty: whoever takes it must be woken.
    bool Push(AppLogMessage message)
    {
        const std::lock_guard lock(m_mutex);
        m_batch.Add(std::move(message), m_most);
        return !m_isFilled.exchange(true);
    }
    /// Quick.
    bool IsEmpty() const { return !m_isFilled; }
    AppLogBatch TakeAll()
    {
        const std::lock_guard lock(m_mutex);
        m_isFilled = false;
        return std::exchange(m_batch, {});
    }

private:
    std::mutex m_mutex;
    std::size_t m_most = 0;
    AppLogBatch m_batch;
    std::atomic<bool> m_isFilled = false;
};

} // namespace kv
