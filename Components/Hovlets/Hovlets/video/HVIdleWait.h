// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace Hovlets {

/*!
 * \brief A sleep that ends early when there is work.
 *
 * A wake that comes before the sleep is not lost: the next sleep ends at once. wake() may be
 * called from any thread.
 */
class HVIdleWait
{
public:
    /// Sleeps until woken, at the most \a milliseconds.
    void sleep(unsigned long milliseconds)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_condition.wait_for(lock, std::chrono::milliseconds(milliseconds),
                             [this] { return m_awake; });
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
