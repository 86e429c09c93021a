// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <functional>
#include <memory>
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
    struct Calls
    {
        int depth = 0;
        std::vector<std::function<void()>> waiting;
    };

public:
    /// A call of QML. The view, and with it the activity, may be deleted meanwhile.
    class Scope
    {
        Q_DISABLE_COPY_MOVE(Scope)

    public:
        explicit Scope(const HVViewActivity &activity)
            : m_calls(activity.m_calls)
        {
            ++activity.m_calls->depth;
        }

        ~Scope()
        {
            const std::shared_ptr<Calls> calls = m_calls.lock();
            if (!calls || --calls->depth > 0)
                return;
            const auto actions = std::exchange(calls->waiting, {});
            for (const auto &action : actions)
                action();
        }

    private:
        std::weak_ptr<Calls> m_calls;
    };

    [[nodiscard]] bool isBusy() const noexcept { return m_calls->depth > 0; }

    /// Calls \a action when no call is pending, which may be immediately.
    void whenIdle(const std::function<void()> &action)
    {
        if (isBusy())
            m_calls->waiting.push_back(action);
        else
            action();
    }

private:
    std::shared_ptr<Calls> m_calls = std::make_shared<Calls>();
};

} // namespace Hovlets
