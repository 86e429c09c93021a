// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QDeadlineTimer>
#include <QtCore/QMutex>
#include <QtCore/QWaitCondition>

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
        QMutexLocker locker(&m_mutex);
        const QDeadlineTimer deadline(static_cast<qint64>(milliseconds));
        while (!m_awake && m_condition.wait(&m_mutex, deadline)) { }
        m_awake = false;
    }

    void wake()
    {
        const QMutexLocker locker(&m_mutex);
        m_awake = true;
        m_condition.wakeAll();
    }

private:
    QMutex m_mutex;
    QWaitCondition m_condition;
    bool m_awake = false;
};

} // namespace Hovlets
