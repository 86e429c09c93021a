// SPDX-License-Identifier: Apache-2.0
#include "Progress.h"

#include <unistd.h>

#include <cstdio>

namespace HovletsTool {

Progress::Progress(bool isWanted)
    : m_isShown(isWanted && ::isatty(STDERR_FILENO) == 1)
{
}

Progress::~Progress()
{
    if (m_isShown)
        std::fprintf(stderr, "\r\033[K");
}

void Progress::begin(const QString &task, int steps)
{
    m_task = task;
    m_steps = steps;
    m_done = 0;
}

void Progress::step()
{
    ++m_done;
    if (m_isShown)
        std::fprintf(stderr, "\r\033[K%s %d of %d", qPrintable(m_task), m_done, m_steps);
}

} // namespace HovletsTool
