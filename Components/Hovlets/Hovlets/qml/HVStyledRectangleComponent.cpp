// SPDX-License-Identifier: Apache-2.0
#include "HVStyledRectangleComponent.h"

#include "HVImageNode.h"

#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtQuick/QQuickWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

#include <algorithm>
#include <array>

namespace Hovlets {

namespace {

struct Element
{
    QLatin1String name;
    int code; // the number of the primitive element in QStyle
};

const std::array<Element, 2> &elements()
{
    static const std::array<Element, 2> table { Element { QLatin1String("PE_Widget"), 46 },
                                                Element { QLatin1String("PE_Frame"), 5 } };
    return table;
}

} // namespace

HVStyledRectangleComponent::HVStyledRectangleComponent(QQuickItem *parent)
    : QQuickItem(parent)
    , m_elementCode(elements().front().code)
    , m_element(elements().front().name)
{
    setFlag(QQuickItem::ItemHasContents);
    connect(this, &QQuickItem::widthChanged, this, &QQuickItem::update);
    connect(this, &QQuickItem::heightChanged, this, &QQuickItem::update);
    connect(qGuiApp, &QGuiApplication::paletteChanged, this, [this] {
        Q_EMIT textColorChanged();
        update();
    });
}

HVStyledRectangleComponent::~HVStyledRectangleComponent() = default;

QString HVStyledRectangleComponent::element() const
{
    return m_element;
}

void HVStyledRectangleComponent::setElement(const QString &element)
{
    const auto found = std::find_if(elements().begin(), elements().end(),
                                    [&](const Element &known) { return known.name == element; });
    if (found == elements().end())
        return;
    m_element = element;
    m_elementCode = found->code;
    Q_EMIT elementChanged();
}

QColor HVStyledRectangleComponent::textColor() const
{
    return m_toolTipStyle ? QColor(Qt::black)
                          : QApplication::palette().color(QPalette::Active, QPalette::WindowText);
}

bool HVStyledRectangleComponent::toolTipStyle() const
{
    return m_toolTipStyle;
}

void HVStyledRectangleComponent::setToolTipStyle(bool toolTipStyle)
{
    m_toolTipStyle = toolTipStyle;
    Q_EMIT toolTipStyleChanged();
    Q_EMIT textColorChanged();
    update();
}

/// Whether the window's content item is the item's only ancestor.
bool HVStyledRectangleComponent::isPainted() const
{
    return m_toolTipStyle || !parentItem() || (window() && parentItem() == window()->contentItem());
}

QRectF HVStyledRectangleComponent::outline() const
{
    const QRectF bounds = boundingRect();
    return m_toolTipStyle ? bounds : bounds.adjusted(-1, -1, 1, 1);
}

void HVStyledRectangleComponent::paint(QPainter *painter) const
{
    if (!isPainted())
        return;
    painter->setBrush(m_toolTipStyle ? QToolTip::palette().brush(QPalette::ToolTipBase)
                                     : QBrush(QApplication::palette().color(QPalette::Active,
                                                                            QPalette::Window)));
    painter->drawRect(outline().toRect());
}

QSGNode *HVStyledRectangleComponent::updatePaintNode(QSGNode *node, UpdatePaintNodeData *data)
{
    Q_UNUSED(data)
    // An outline is centred on its coordinates.
    const QRect area = outline().toRect().adjusted(-1, -1, 2, 2);
    QImage image;
    if (isPainted() && !area.isEmpty() && window()) {
        const qreal ratio = window()->effectiveDevicePixelRatio();
        image = QImage((QSizeF(area.size()) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.translate(-area.topLeft());
        paint(&painter);
    }
    return updateImageNode(node, window(), image, area.topLeft());
}

void HVStyledRectangleComponent::itemChange(ItemChange change, const ItemChangeData &value)
{
    QQuickItem::itemChange(change, value);
    if (change == ItemParentHasChanged || change == ItemDevicePixelRatioHasChanged)
        update();
}

} // namespace Hovlets
