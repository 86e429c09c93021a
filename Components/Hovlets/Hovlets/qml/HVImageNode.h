// SPDX-License-Identifier: Apache-2.0
#pragma once

class QImage;
class QPointF;
class QQuickWindow;
class QSGNode;

namespace Hovlets {

/*!
 * \brief The QSGImageNode of an item that shows one image at its natural size.
 *
 * While each pixel of the image covers one pixel of the window, the image is drawn without
 * smoothing, even between pixels. Scaled by the item, an ancestor or the screen, it is smoothed.
 *
 * The image may extend past the item. Returns \a node, or a new node if it is null, with a texture
 * of \a image at \a topLeft. For a null image, deletes \a node and returns null. Call it from
 * QQuickItem::updatePaintNode(), and only if the image or the window's device pixel ratio has
 * changed, because each call uploads the image.
 */
QSGNode *updateImageNode(QSGNode *node, QQuickWindow *window, const QImage &image,
                         const QPointF &topLeft);

} // namespace Hovlets
