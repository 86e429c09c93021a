// SPDX-License-Identifier: Apache-2.0
#pragma once

class QImage;
class QPointF;
class QQuickWindow;
class QSGNode;

namespace Hovlets {

/*!
 * \brief The scene graph node of an item that shows one image at its own size, nearest pixels.
 *
 * It may reach beyond the item. Returns \a node, or a new one for a null \a node, with a texture of
 * \a image at \a topLeft; deletes it and returns null for a null image. Call it from
 * QQuickItem::updatePaintNode() when the image has changed, and only then: each call uploads.
 */
QSGNode *updateImageNode(QSGNode *node, QQuickWindow *window, const QImage &image,
                         const QPointF &topLeft);

} // namespace Hovlets
