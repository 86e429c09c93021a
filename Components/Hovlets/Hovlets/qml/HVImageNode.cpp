// SPDX-License-Identifier: Apache-2.0
#include "HVImageNode.h"

#include <QtGui/QImage>
#include <QtGui/QMatrix4x4>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>

#include <memory>

namespace Hovlets {

namespace {

QMatrix4x4 sceneTransform(const QSGNode &node)
{
    QMatrix4x4 transform;
    for (const QSGNode *parent = node.parent(); parent; parent = parent->parent()) {
        if (parent->type() == QSGNode::TransformNodeType)
            transform = static_cast<const QSGTransformNode *>(parent)->matrix() * transform;
    }
    return transform;
}

/// Whether each pixel of the image covers one pixel of the window, of which \a ratio make up one
/// unit of the scene.
bool isPixelForPixel(const QSGImageNode &node, qreal ratio)
{
    const QMatrix4x4 transform = sceneTransform(node);
    const QRectF rect = node.rect();
    const QPointF origin = transform.map(rect.topLeft());
    const QPointF across = (transform.map(rect.topRight()) - origin) * ratio;
    const QPointF down = (transform.map(rect.bottomLeft()) - origin) * ratio;
    const QSize pixels = node.texture()->textureSize();
    constexpr qreal Rounding = 0.5; // the image has a whole number of pixels, its item need not
    const auto isClose = [](const QPointF &is, const QPointF &should) {
        return qAbs(is.x() - should.x()) <= Rounding && qAbs(is.y() - should.y()) <= Rounding;
    };
    return isClose(across, QPointF(pixels.width(), 0))
            && isClose(down, QPointF(0, pixels.height()));
}

/*!
 * \brief Selects the filter of its parent, an image node, before each frame.
 *
 * An ancestor may be scaled without a change to the item. Only the scene's transforms show it.
 */
class FilterNode : public QSGNode
{
public:
    FilterNode() { setFlag(UsePreprocess); }

    void preprocess() override
    {
        auto *image = static_cast<QSGImageNode *>(parent());
        image->setFiltering(isPixelForPixel(*image, ratio) ? QSGTexture::Nearest
                                                           : QSGTexture::Linear);
    }

    qreal ratio = 1;
};

} // namespace

QSGNode *updateImageNode(QSGNode *node, QQuickWindow *window, const QImage &image,
                         const QPointF &topLeft)
{
    std::unique_ptr<QSGNode> old(node);
    if (image.isNull() || !window)
        return nullptr;
    std::unique_ptr<QSGTexture> texture(window->createTextureFromImage(image));
    if (!texture)
        return nullptr;

    if (!old) {
        old.reset(window->createImageNode());
        old->appendChildNode(new FilterNode);
    }
    auto *imageNode = static_cast<QSGImageNode *>(old.get());
    // Only one of the scene graph's renderers deletes a texture when it is replaced.
    const std::unique_ptr<QSGTexture> replaced(imageNode->texture());
    imageNode->setOwnsTexture(false);
    imageNode->setTexture(texture.release());
    imageNode->setOwnsTexture(true);
    imageNode->setRect(QRectF(topLeft, QSizeF(image.size()) / image.devicePixelRatio()));
    static_cast<FilterNode *>(imageNode->firstChild())->ratio = window->effectiveDevicePixelRatio();
    return old.release();
}

} // namespace Hovlets
