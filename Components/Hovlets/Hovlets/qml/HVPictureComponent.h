// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVPictureLoader.h"

#include <QtCore/QString>
#include <QtQuick/QQuickItem>

#include <optional>

namespace Hovlets {

/*!
 * \brief The QML item that shows a picture of the content's resources.
 *
 * Its implicit size is that of the picture and known immediately. The picture itself follows later:
 * a background thread decodes it at the item's size on screen. Only regular files are opened,
 * within HVLimits. GUI thread only.
 */
class HVPictureComponent : public QQuickItem
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVPictureComponent)
    Q_PROPERTY(QString source READ source WRITE setSource NOTIFY sourceChanged)
    Q_PROPERTY(bool loading READ isLoading NOTIFY loadingChanged)
    Q_PROPERTY(bool failed READ hasFailed NOTIFY failedChanged)

public:
    explicit HVPictureComponent(QQuickItem *parent = nullptr);
    ~HVPictureComponent() override;

    /// The path of the picture file.
    QString source() const { return m_source; }

    /// Clears the picture even if the path does not change, because the file may have changed.
    void setSource(const QString &path);

    /// Whether the picture is still being decoded.
    bool isLoading() const { return m_isLoading; }

    /// Whether the file cannot be shown. Often only decoding reveals that.
    bool hasFailed() const { return m_hasFailed; }

Q_SIGNALS:
    void sourceChanged();
    void loadingChanged();
    void failedChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;
    void updatePolish() override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    QSize sizeOnScreen() const;
    void setLoading(bool isLoading);
    void setFailed(bool hasFailed);
    void show(const HVSharedPicture &picture);

    QString m_source;
    QSize m_requestedSize;
    std::optional<HVPictureRequest> m_request;
    HVSharedPicture m_picture;
    bool m_isUploaded = false; // whether m_picture is in the scene graph
    bool m_isLoading = false;
    bool m_hasFailed = false;
};

} // namespace Hovlets
