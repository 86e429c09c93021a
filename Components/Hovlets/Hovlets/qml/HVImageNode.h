// SPDX-License-Identifier: Apache-2.0
#pragma once

class QImage;
class QPointF;
class QQuickWindow;
class QSGNode;

namespace Hovlets {

/*!
 * \brief The scene graph node of an item that shows one image at its natural size, without
 * smoothing.
 *
 * The image may extend past the item. Returns \a node, or a new node if it is null, with a texture
 * of \a image at \a topLeft. For a null image, deletes \a node and returns null. Call it from
 * QQuickItem::updatePaintNode(), and only if the image has changed, because each call uploads it.
 */
QSGNode *updateImageNode(QSGNode *node, QQuickWindow *window, const QImage &image,
                         const QPointF &topLeft);

} // namespace Hovlets
