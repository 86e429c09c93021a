// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "FakeVideoSource.h"
#include "SignalOrder.h"

#include <QtCore/QUrl>

#include <mutex>

/// Gives tests access to what only subclasses may call, and records the virtual functions called.
class RequestedSource : public FakeVideoSource
{
public:
    ~RequestedSource() override { end(); }

    /// Thread checkers cannot see into the lock that QThread::wait() uses in QtCore.
    void end()
    {
        quit();
        const std::lock_guard<std::mutex> locker(m_running);
    }

    // Skips the fake source on purpose: it counts calls, and these tests need the real effect.
    void close() override { HVVideoSource::close(); } // NOLINT(bugprone-parent-virtual-call)

    using HVVideoSource::idle;
    using HVVideoSource::loadSource;
    using HVVideoSource::processActionQueue;

    void changeSetAction(Action action) override
    {
        calls.add(QStringLiteral("action %1").arg(int(action)));
        HVVideoSource::changeSetAction(action);
    }

    void changeSetSource(const QUrl &url) override
    {
        calls.add(QStringLiteral("source %1").arg(url.toString()));
        HVVideoSource::changeSetSource(url);
    }

    SignalOrder calls;

protected:
    void run() override
    {
        const std::lock_guard<std::mutex> locker(m_running);
        while (!shouldQuit()) {
            processActionQueue();
            if (action() == StopAction)
                return;
            idle();
        }
    }

private:
    std::mutex m_running;
};

inline QUrl clipUrl(int number = 1)
{
    return QUrl(QStringLiteral("file:///clips/%1.mp4").arg(number));
}
