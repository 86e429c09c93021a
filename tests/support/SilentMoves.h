// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "TestMain.h"

#include <QtCore/QAbstractNativeEventFilter>
#include <QtCore/QProcess>
#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <QtWidgets/QWidget>

#include <cstdint>

/// Moves windows of an X display so that Qt does not notice, as some window managers do.
class SilentMoves : public QAbstractNativeEventFilter
{
    Q_DISABLE_COPY_MOVE(SilentMoves)

    template <typename Number>
    static Number numberOf(bool (QAbstractNativeEventFilter::*)(const QByteArray &, void *,
                                                                Number *));
    /// Its type depends on the version of Qt.
    using Result = decltype(numberOf(&QAbstractNativeEventFilter::nativeEventFilter));

public:
    /// Returns once the window is at \a position.
    static void move(const QWidget &window, const QPoint &position)
    {
        QCursor::pos(); // waits until the server has the window
        SilentMoves filter;
        const QStringList arguments { QStringLiteral("windowmove"),
                                      QString::number(window.windowHandle()->winId()),
                                      QString::number(position.x()),
                                      QString::number(position.y()) };
        QCOMPARE(QProcess::execute(QStringLiteral("xdotool"), arguments), 0);
        QTRY_VERIFY(filter.m_hasMoved);
    }

    bool nativeEventFilter(const QByteArray &, void *message, Result *) override
    {
        constexpr uint8_t ConfigureNotify = 22;
        constexpr uint8_t Sent = 0x80; // by a client, which window managers are
        if ((*static_cast<const uint8_t *>(message) & ~Sent) != ConfigureNotify)
            return false;
        m_hasMoved = true;
        return true;
    }

private:
    SilentMoves() { qGuiApp->installNativeEventFilter(this); }
    ~SilentMoves() override { qGuiApp->removeNativeEventFilter(this); }

    bool m_hasMoved = false;
};
