// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtCore/QVector>

// Traces of a pointer that leaves a control with a popup, and the windows that they cross.
// Coordinates are global and in pixels, times in ms.

/// Adjacent controls. The popup of each is at the same distance from it.
struct TraceScene
{
    QString window; // "toolbar", "form", "menu"
    QString side; // the popup's side: "below", "above", "right", "left"
    int away = 6; // distance between control and popup
    int along = 0; // shift of the popup along the control

    QVector<QRect> controls() const;
    QRect popupOf(int control) const;

    /// The control at \a position, or -1.
    int controlAt(const QPoint &position) const;
};

struct TraceSample
{
    QPoint position;
    int time;
};

struct PointerTrace
{
    static constexpr int Popup = -1;

    TraceScene scene;
    QString kind; // kind of movement: "straight", "curved", …
    int origin = 0; // the control whose popup shows
    int aim = Popup; // or the control that the pointer moves to
    int arrival = 0; // when the pointer comes to rest at its aim
    QVector<TraceSample> samples;

    QString name() const;
};

/// One line for each trace: its description, then each sample as the difference from the last.
QByteArray writeTraces(const QVector<PointerTrace> &traces);
QVector<PointerTrace> readTraces(const QByteArray &text);

/// The committed traces, which depend only on a fixed seed.
QVector<PointerTrace> generateTraces();
