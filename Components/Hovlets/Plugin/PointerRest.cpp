// SPDX-License-Identifier: Apache-2.0
#include "PointerRest.h"

#include <QtGui/QCursor>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace Hovlets {

namespace {

constexpr int Interval = 100; // ms
constexpr int LooksAtRest = 4;

} // namespace

PointerRest::PointerRest(QObject *parent)
    : QObject(parent)
{
    connect(&m_timer, &QTimer::timeout, this, &PointerRest::look);
    m_timer.start(Interval);
}

void PointerRest::look()
{
    const QPoint position = QCursor::pos();
    m_looks = position == m_position ? m_looks + 1 : 0;
    m_position = position;
    if (m_looks != LooksAtRest)
        return;
    if (QWidget *widget = QApplication::widgetAt(position))
        Q_EMIT rested(widget, position);
}

} // namespace Hovlets
