// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

#include <ctime>

/*!
 * \brief CPU time of this thread since construction, in ms.
 *
 * Unlike elapsed time, it hardly depends on the machine's load.
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
