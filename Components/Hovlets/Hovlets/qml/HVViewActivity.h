// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace Hovlets {

/*!
 * \brief Counts the calls of a view's QML that have not returned yet.
 *
 * QML calls the view, which asks the host, whose code may do anything. Deleting the QML meanwhile
 * would crash, so deletions wait until the last call has returned.
 */
class HVViewActivity
{
public:
    [[nodiscard]] bool isBusy() const noexcept { return m_depth > 0; }

    /// Calls \a action when no call is pending, which may be immediately.
    void whenIdle(const std::function<void()> &action)
    {
        if (isBusy())
            m_waiting.push_back(action);
        else
            action();
    }

    void begin() noexcept { ++m_depth; }

    void end()
    {
        if (--m_depth > 0)
            return;
        const auto actions = std::exchange(m_waiting, {});
        for (const auto &action : actions)
            action();
    }

private:
    int m_depth = 0;
    std::vector<std::function<void()>> m_waiting;
};

} // namespace Hovlets
