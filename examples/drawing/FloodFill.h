// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QColor>
#include <QtGui/QImage>

/*!
 * \brief Fills the area around \a start whose pixels have nearly the same colour.
 *
 * \a image must be ARGB32, premultiplied. Returns false if nothing changed, because \a start is
 * outside the image or the area already has the colour.
 */
bool floodFill(QImage &image, const QPoint &start, const QColor &color);
