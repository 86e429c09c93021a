// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QColor>
#include <QtGui/QImage>

/*!
 * \brief Colours the area around \a start whose pixels have about the colour found there.
 *
 * \a image must be ARGB32, premultiplied. False when nothing changed: \a start lies outside, or the
 * area has the colour already.
 */
bool floodFill(QImage &image, const QPoint &start, const QColor &color);
