// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtQuick/QQuickItem>

namespace Hovlets {

/*!
 * \brief A bordered rectangle in the colours of the desktop's tooltips or windows.
 *
 * The border's right and bottom lines are just outside the item, at x = width and y = height. In
 * the style of windows, only an item without a parent paints, and is one pixel larger on each side.
 * GUI thread only.
 */
class HVStyledRectangleComponent : public QQuickItem
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVStyledRectangleComponent)
    Q_PROPERTY(QString element READ element WRITE setElement NOTIFY elementChanged)
    Q_PROPERTY(QColor textColor READ textColor NOTIFY textColorChanged)
    Q_PROPERTY(bool toolTipStyle READ toolTipStyle WRITE setToolTipStyle NOTIFY toolTipStyleChanged)

public:
    explicit HVStyledRectangleComponent(QQuickItem *parent = nullptr);
    ~HVStyledRectangleComponent() override;

    /// "PE_Widget" (the default) or "PE_Frame". The painting does not depend on it.
    QString element() const;

    /// Ignores unknown names.
    void setElement(const QString &element);

    /// Colour for text on the rectangle: black in tooltip style, else the palette's text colour.
    QColor textColor() const;

    bool toolTipStyle() const;
    void setToolTipStyle(bool toolTipStyle);

    /// Paints the rectangle, with the item's top-left corner at (0, 0).
    void paint(QPainter *painter) const;

Q_SIGNALS:
    void elementChanged();
    void textColorChanged();
    void toolTipStyleChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    bool isPainted() const;
    QRectF outline() const;

    int m_elementCode;
    QString m_element;
    bool m_toolTipStyle = false;
};

} // namespace Hovlets
