// SPDX-License-Identifier: Apache-2.0
#pragma once

class QWidget;

namespace Hovlets {

/*!
 * Paints \a widget and what else has changed in its window, in this turn of the event loop.
 *
 * QWidget::repaint() is not enough: a window that is composed with OpenGL postpones it if the last
 * frame is more recent than the screen's refresh interval.
 */
void paintNow(QWidget &widget);

} // namespace Hovlets
