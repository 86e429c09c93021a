// SPDX-License-Identifier: Apache-2.0
#include "HVPictureComponent.h"

#include "HVImageNode.h"
#include "HVPictureFile.h"

#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>

namespace Hovlets {

HVPictureComponent::HVPictureComponent(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(QQuickItem::ItemHasContents);
    connect(this, &QQuickItem::widthChanged, this, &QQuickItem::polish);
    connect(this, &QQuickItem::heightChanged, this, &QQuickItem::polish);
}

HVPictureComponent::~HVPictureComponent() = default;

void HVPictureComponent::setSource(const QString &path)
{
    m_source = path;
    m_request.reset();
    m_requestedSize = QSize();
    show({});
    const QSize size = path.isEmpty() ? QSize() : HVPictureFile(path).size();
    setImplicitSize(size.isEmpty() ? 0 : size.width(), size.isEmpty() ? 0 : size.height());
    setLoading(!size.isEmpty());
    setFailed(size.isEmpty() && !path.isEmpty());
    polish();
    Q_EMIT sourceChanged();
}

/// Size of the item in device pixels. The item has the picture's proportions.
QSize HVPictureComponent::sizeOnScreen() const
{
    const qreal ratio = window() ? window()->effectiveDevicePixelRatio() : 1;
    return (QSizeF(width(), height()) * ratio).toSize();
}

void HVPictureComponent::setLoading(bool isLoading)
{
    if (m_isLoading == isLoading)
        return;
    m_isLoading = isLoading;
    Q_EMIT loadingChanged();
}

void HVPictureComponent::setFailed(bool hasFailed)
{
    if (m_hasFailed == hasFailed)
        return;
    m_hasFailed = hasFailed;
    Q_EMIT failedChanged();
}

void HVPictureComponent::show(const HVSharedPicture &picture)
{
    m_picture = picture;
    m_isUploaded = false;
    update();
}

/// Called when the item has its final size. Requests the picture at that size, once.
void HVPictureComponent::updatePolish()
{
    const QSize size = sizeOnScreen();
    if (!window() || size.isEmpty() || implicitWidth() <= 0 || size == m_requestedSize)
        return;
    m_requestedSize = size;
    setLoading(true);
    m_request.emplace(m_source, size, this, [this](const HVSharedPicture &picture) {
        show(picture);
        setLoading(false);
        if (m_request) // QML may have set another source meanwhile
            setFailed(!picture);
    });
}

QSGNode *HVPictureComponent::updatePaintNode(QSGNode *node, UpdatePaintNodeData *data)
{
    Q_UNUSED(data)
    if (!m_isUploaded || !node || !m_picture)
        node = updateImageNode(node, window(), m_picture ? *m_picture : QImage(), QPointF());
    m_isUploaded = true;
    // The sizes differ until the picture is decoded again, or if it is smaller than the item.
    if (node)
        static_cast<QSGImageNode *>(node)->setRect(boundingRect());
    return node;
}

void HVPictureComponent::itemChange(ItemChange change, const ItemChangeData &value)
{
    QQuickItem::itemChange(change, value);
    if (change == ItemDevicePixelRatioHasChanged)
        m_isUploaded = false;
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged)
        polish();
}

} // namespace Hovlets
