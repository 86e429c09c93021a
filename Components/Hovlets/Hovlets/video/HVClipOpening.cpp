// SPDX-License-Identifier: Apache-2.0
#include "HVClipOpening.h"

#include <chrono>

namespace Hovlets {

HVClipOpening::State HVClipOpening::wait(const QUrl &url, int milliseconds) const
{
    std::unique_lock<std::mutex> locker(m_mutex);
    // The thread sanitizer does not intercept a wait on the steady clock.
    const auto end = std::chrono::system_clock::now() + std::chrono::milliseconds(milliseconds);
    if (!m_ended.wait_until(locker, end, [&] { return m_last == url; }))
        return State::Pending;
    return m_isOpened ? State::Opened : State::Failed;
}

void HVClipOpening::end(const QUrl &url, bool isOpened)
{
    {
        const std::lock_guard<std::mutex> locker(m_mutex);
        m_last = url;
        m_isOpened = isOpened;
    }
    m_ended.notify_all();
    if (!isOpened)
        Q_EMIT failed();
}

} // namespace Hovlets
