// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVX11.h"
#include "Patience.h"

#include <QtCore/QProcess>
#include <QtTest/QTest>

/// A compositor on the X display, which needs picom. It draws no shadows of its own.
class Compositor
{
public:
    ~Compositor() { stop(); }

    /// Returns false if it does not start.
    bool start()
    {
        m_process.start(QStringLiteral("picom"),
                        { QStringLiteral("--backend"), QStringLiteral("xrender"),
                          QStringLiteral("--config"), QStringLiteral("/dev/null") });
        return m_process.waitForStarted() && QTest::qWaitFor(&Hovlets::isX11Composited, Patience);
    }

    /// Returns false if it does not end.
    bool stop()
    {
        m_process.terminate();
        const bool ended = m_process.state() == QProcess::NotRunning || m_process.waitForFinished();
        return ended && QTest::qWaitFor([] { return !Hovlets::isX11Composited(); }, Patience);
    }

private:
    QProcess m_process;
};
