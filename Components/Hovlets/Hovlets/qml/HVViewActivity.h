// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace Hovlets {

/*!
 * \brief Counts what QML of a view has asked for and is waiting for.
 *
 * QML calls the view, which asks the host, whose code may do anything: deleting the QML meanwhile
 * would pull the ground from under it, so what would delete it waits for the last answer.
 */
class HVViewActivity
{
public:
    [[nodiscard]] bool isBusy() const noexcept { return m_depth > 0; }

    /// Calls \a action when nothing is under way, at once if nothing is.
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
