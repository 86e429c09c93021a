// SPDX-License-Identifier: Apache-2.0
#include "Progress.h"

#include <QtCore/qglobal.h>

#include <cstdio>

#ifdef Q_OS_WIN
#    include <io.h>
#else
#    include <unistd.h>
#endif

namespace HovletsTool {

namespace {

bool isTerminal(std::FILE *stream)
{
#ifdef Q_OS_WIN
    return ::_isatty(::_fileno(stream)) != 0;
#else
    return ::isatty(::fileno(stream)) == 1;
#endif
}

} // namespace

Progress::Progress(bool isWanted)
    : m_isShown(isWanted && isTerminal(stderr))
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
