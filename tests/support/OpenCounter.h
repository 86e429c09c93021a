// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QFile>
#include <QtCore/QString>

#include <sys/inotify.h>
#include <unistd.h>

/// Counts how often any process opens a file.
class OpenCounter
{
    Q_DISABLE_COPY_MOVE(OpenCounter)

public:
    explicit OpenCounter(const QString &path)
        : m_queue(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        if (inotify_add_watch(m_queue, QFile::encodeName(path).constData(), IN_OPEN | IN_CLOSE) < 0)
            qFatal("cannot watch %s", qPrintable(path));
    }

    ~OpenCounter() { close(m_queue); }

    /// The number of times since the last call, or since construction.
    int take()
    {
        int opened = 0;
        inotify_event event {}; // events of a watched file have no name
        while (read(m_queue, &event, sizeof event) == sizeof event) {
            if (event.mask & IN_OPEN)
                ++opened;
        }
        return opened;
    }

private:
    int m_queue;
};
