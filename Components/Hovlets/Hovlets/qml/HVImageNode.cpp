// SPDX-License-Identifier: Apache-2.0
#include "HVImageNode.h"

#include <QtGui/QImage>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>

#include <memory>

namespace Hovlets {

QSGNode *updateImageNode(QSGNode *node, QQuickWindow *window, const QImage &image,
                         const QPointF &topLeft)
{
    std::unique_ptr<QSGNode> old(node);
    if (image.isNull() || !window)
        return nullptr;
    std::unique_ptr<QSGTexture> texture(window->createTextureFromImage(image));
    if (!texture)
        return nullptr;

    if (!old)
        old.reset(window->createImageNode());
    auto *imageNode = static_cast<QSGImageNode *>(old.get());
    // Only one of the scene graph's renderers deletes a texture when it is replaced.
    const std::unique_ptr<QSGTexture> replaced(imageNode->texture());
    imageNode->setOwnsTexture(false);
    imageNode->setTexture(texture.release());
    imageNode->setOwnsTexture(true);
    imageNode->setFiltering(QSGTexture::Nearest);
    imageNode->setRect(QRectF(topLeft, QSizeF(image.size()) / image.devicePixelRatio()));
    return old.release();
}

} // namespace Hovlets
