// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtCore/QVector>

// Traces of a pointer that leaves a control which has a popup, and the windows that they run over.
// Everything is global, in pixels and ms.

/// Controls beside each other; the popup of each lies at the same distance from it.
struct TraceScene
{
    QString window; // "toolbar", "form", "menu"
    QString side; // of the popup: "below", "above", "right", "left"
    int away = 6; // from the control to the popup
    int along = 0; // by how much the popup is shifted along the control

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
    QString kind; // of movement: "straight", "curved", …
    int origin = 0; // the control whose popup shows
    int aim = Popup; // or the control that the pointer is on its way to
    int arrival = 0; // when the pointer has come to rest at its aim
    QVector<TraceSample> samples;

    QString name() const;
};

/// One trace, one line: what it is, then each sample as what changed since the one before.
QByteArray writeTraces(const QVector<PointerTrace> &traces);
QVector<PointerTrace> readTraces(const QByteArray &text);

/// The committed traces, made from nothing but a fixed seed.
QVector<PointerTrace> generateTraces();
