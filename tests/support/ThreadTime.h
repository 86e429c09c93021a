// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

#include <ctime>

/*!
 * \brief Milliseconds that this thread has spent on the processor since construction.
 *
 * Unlike the time on the clock it hardly depends on what else the machine does.
 */
class ThreadTime
{
public:
    [[nodiscard]] double elapsed() const { return now() - m_start; }

private:
    static double now()
    {
        timespec time {};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return 1e3 * double(time.tv_sec) + 1e-6 * double(time.tv_nsec);
    }

    double m_start = now();
};
