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
    explicit AppLogQueue(int maximum) : m_batch(maximum) {}

    /// Sets the maximum of the log for what comes from now on. @return what came before.
    AppLogBatch SetMaximum(int maximum)
    {
        const std::lock_guard lock(m_mutex);
        return Exchange(maximum);
    }
    /// @return true when it was empty: whoever takes it must be woken.
    bool Push(AppLogMessage message)
    {
        const std::lock_guard lock(m_mutex);
        m_batch.Add(std::move(message));
        return !m_isFilled.exchange(true);
    }
    /// Quick.
    bool IsEmpty() const { return !m_isFilled; }
    AppLogBatch TakeAll()
    {
        const std::lock_guard lock(m_mutex);
        return Exchange(m_batch.Maximum());
    }

private:
    AppLogBatch Exchange(int maximum)
    {
        m_isFilled = false;
        return std::exchange(m_batch, AppLogBatch(maximum));
    }

    std::mutex m_mutex;
    AppLogBatch m_batch;
    std::atomic<bool> m_isFilled = false;
};

} // namespace kv
