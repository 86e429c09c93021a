// SPDX-License-Identifier: Apache-2.0
#include "Pointer.h"

#include <QtCore/QProcess>
#include <QtGui/QGuiApplication>
#include <QtGui/QPixmap>
#include <QtGui/QScreen>

void Pointer::moveTo(const QPoint &position)
{
    run({ QStringLiteral("mousemove"), QString::number(position.x()),
          QString::number(position.y()) });
}

void Pointer::moveAway()
{
    moveTo(QGuiApplication::primaryScreen()->geometry().bottomRight() - QPoint(2, 2));
}

void Pointer::agree()
{
    QRect outputs;
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (const QScreen *screen : screens)
        outputs |= screen->geometry();
    for (int edges = 0; edges < 2; ++edges) {
        moveTo(outputs.bottomRight());
        moveTo(outputs.topLeft());
    }
}

void Pointer::click()
{
    run({ QStringLiteral("click"), QStringLiteral("1") });
}

void Pointer::hold()
{
    run({ QStringLiteral("mousedown"), QStringLiteral("1") });
}

void Pointer::letGo()
{
    run({ QStringLiteral("mouseup"), QStringLiteral("1") });
}

void Pointer::turnWheel()
{
    run({ QStringLiteral("click"), QStringLiteral("5") });
}

void Pointer::press(const QString &key)
{
    run({ QStringLiteral("keydown"), key });
}

void Pointer::release(const QString &key)
{
    run({ QStringLiteral("keyup"), key });
}

void Pointer::run(const QStringList &arguments)
{
    const QString program = QStringLiteral("xdotool");
    if (QProcess::execute(program, arguments) != 0)
        qFatal("xdotool %s failed", qPrintable(arguments.join(QLatin1Char(' '))));
}

QColor pixelOnScreen(const QPoint &position)
{
    const QPixmap pixmap =
            QGuiApplication::primaryScreen()->grabWindow(0, position.x(), position.y(), 1, 1);
    return pixmap.isNull() ? QColor() : pixmap.toImage().pixelColor(0, 0);
}
