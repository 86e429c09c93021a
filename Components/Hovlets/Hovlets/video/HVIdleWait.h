// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace Hovlets {

/*!
 * \brief A sleep that lasts until there is work.
 *
 * A wake that comes before the sleep is not lost: the next sleep then ends immediately. Any thread
 * may call wake().
 */
class HVIdleWait
{
public:
    /// Sleeps until woken.
    void sleep()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_condition.wait(lock, [this] { return m_awake; });
        m_awake = false;
    }

    /// Sleeps until woken, or until \a end.
    void sleepUntil(std::chrono::system_clock::time_point end)
    {
        // The thread sanitizer does not intercept a wait on the steady clock.
        std::unique_lock<std::mutex> lock(m_mutex);
        m_condition.wait_until(lock, end, [this] { return m_awake; });
        m_awake = false;
    }

    void wake()
    {
        {
            const std::lock_guard<std::mutex> locker(m_mutex);
            m_awake = true;
        }
        m_condition.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_condition;
    bool m_awake = false;
};

} // namespace Hovlets
