// SPDX-License-Identifier: Apache-2.0
#include "PointerTraces.h"

#include <QtCore/QStringList>

#include <algorithm>

namespace {

constexpr QSize PopupSize(300, 160);

/// Rows of equal rectangles.
QVector<QRect> grid(const QRect &first, int columns, int rows, const QPoint &step)
{
    QVector<QRect> rectangles;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column)
            rectangles.append(first.translated(column * step.x(), row * step.y()));
    }
    return rectangles;
}

QByteArray number(int value)
{
    return QByteArray::number(value);
}

PointerTrace readTrace(const QByteArray &line)
{
    const QList<QByteArray> words = line.split(' ');
    Q_ASSERT(words.size() > 8);
    PointerTrace trace;
    trace.scene.window = QString::fromUtf8(words.at(0));
    trace.scene.side = QString::fromUtf8(words.at(1));
    trace.scene.away = words.at(2).toInt();
    trace.scene.along = words.at(3).toInt();
    trace.kind = QString::fromUtf8(words.at(4));
    trace.origin = words.at(5).toInt();
    trace.aim = words.at(6).toInt();
    trace.arrival = words.at(7).toInt();
    TraceSample sample { {}, 0 };
    for (int i = 8; i < words.size(); ++i) {
        const QList<QByteArray> numbers = words.at(i).split(',');
        Q_ASSERT(numbers.size() == 3);
        sample.position += QPoint(numbers.at(0).toInt(), numbers.at(1).toInt());
        sample.time += numbers.at(2).toInt();
        trace.samples.append(sample);
    }
    return trace;
}

} // namespace

QVector<QRect> TraceScene::controls() const
{
    if (window == QLatin1String("toolbar")) // two rows of buttons without gaps
        return grid({ 440, 380, 32, 32 }, 12, 2, { 32, 32 });
    if (window == QLatin1String("form"))
        return grid({ 500, 260, 260, 26 }, 1, 8, { 0, 36 });
    return grid({ 520, 280, 220, 24 }, 1, 10, { 0, 24 });
}

QRect TraceScene::popupOf(int control) const
{
    const QRect rectangle = controls().at(control);
    QRect popup(rectangle.topLeft(), PopupSize);
    if (side == QLatin1String("below"))
        popup.moveTop(rectangle.bottom() + 1 + away);
    else if (side == QLatin1String("above"))
        popup.moveBottom(rectangle.top() - 1 - away);
    else if (side == QLatin1String("right"))
        popup.moveLeft(rectangle.right() + 1 + away);
    else
        popup.moveRight(rectangle.left() - 1 - away);
    const bool isVertical = side == QLatin1String("below") || side == QLatin1String("above");
    popup.translate(isVertical ? along : 0, isVertical ? 0 : along);
    return popup;
}

int TraceScene::controlAt(const QPoint &position) const
{
    const QVector<QRect> rectangles = controls();
    const auto found =
            std::find_if(rectangles.begin(), rectangles.end(),
                         [&](const QRect &control) { return control.contains(position); });
    return found == rectangles.end() ? -1 : int(found - rectangles.begin());
}

QString PointerTrace::name() const
{
    return QStringLiteral("%1 %2 %3 %4 %5 %6 to %7")
            .arg(scene.window, scene.side, QString::number(scene.away),
                 QString::number(scene.along), kind, QString::number(origin),
                 aim == Popup ? QStringLiteral("popup") : QString::number(aim));
}

QByteArray writeTraces(const QVector<PointerTrace> &traces)
{
    QByteArray text;
    for (const PointerTrace &trace : traces) {
        text += trace.scene.window.toUtf8() + ' ' + trace.scene.side.toUtf8() + ' '
                + number(trace.scene.away) + ' ' + number(trace.scene.along) + ' '
                + trace.kind.toUtf8() + ' ' + number(trace.origin) + ' ' + number(trace.aim) + ' '
                + number(trace.arrival);
        TraceSample last { {}, 0 };
        for (const TraceSample &sample : trace.samples) {
            const QPoint moved = sample.position - last.position;
            text += ' ' + number(moved.x()) + ',' + number(moved.y()) + ','
                    + number(sample.time - last.time);
            last = sample;
        }
        text += '\n';
    }
    return text;
}

QVector<PointerTrace> readTraces(const QByteArray &text)
{
    QVector<PointerTrace> traces;
    const QList<QByteArray> lines = text.split('\n');
    for (const QByteArray &line : lines) {
        if (!line.isEmpty())
            traces.append(readTrace(line));
    }
    return traces;
}
