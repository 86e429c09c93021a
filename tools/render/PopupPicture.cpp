// SPDX-License-Identifier: Apache-2.0
#include "PopupPicture.h"

#include <HVArrow.h>
#include <HVFramePainting.h>
#include <HVView.h>

#include <QtGui/QPainter>

#include <algorithm>

namespace HovletsTool {

using namespace Hovlets;

QImage withRim(const QImage &picture, const HVView &view)
{
    const QColor color = view.rimColor();
    if (!color.isValid())
        return picture;
    QImage whole(picture.size() + QSize(1, 1) * picture.devicePixelRatio(), QImage::Format_RGB32);
    whole.setDevicePixelRatio(picture.devicePixelRatio());
    whole.fill(color);
    QPainter(&whole).drawImage(0, 0, picture);
    return whole;
}

QImage inRoundedWindow(const QImage &picture, const HVView &view)
{
    const qreal scale = picture.devicePixelRatio();
    QImage whole(picture.size() + QSize(1, 1) * scale, QImage::Format_ARGB32_Premultiplied);
    whole.setDevicePixelRatio(scale);
    whole.fill(Qt::transparent);
    QPainter painter(&whole);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF window(QPointF(), QSizeF(whole.size()) / scale);
    const qreal radius = view.cornerRadius();
    painter.setBrush(view.rimColor());
    painter.drawRoundedRect(window, radius, radius);
    painter.setBrush(view.fillColor());
    painter.drawRoundedRect(window.adjusted(1, 1, -1, -1), radius - 1, radius - 1);
    painter.drawImage(0, 0, picture);
    return whole;
}

QImage onSurface(const QImage &picture, const HVView &view)
{
    const qreal scale = picture.devicePixelRatio();
    const int margin = qRound(FrameMargin * scale);
    const QSize popup = picture.size() + QSize(1, 1) * scale;
    QImage whole(popup + QSize(2, 2) * margin, QImage::Format_ARGB32_Premultiplied);
    whole.fill(Qt::transparent);

    HVFrameLook look;
    look.radius = view.cornerRadius();
    look.fill = view.fillColor();
    look.line = view.rimColor();
    constexpr int Usual = 28; // from the left, in device-independent pixels
    const int middle = qRound(popup.width() / scale / 2);
    look.arrow = HVArrow { HVSide::Below, std::min(Usual, middle) };
    QPainter painter(&whole);
    paintFrame(painter, QRect(QPoint(margin, margin), popup), look, scale);
    QImage plain = picture;
    plain.setDevicePixelRatio(1);
    painter.drawImage(margin, margin, plain);
    painter.end();
    whole.setDevicePixelRatio(scale);
    return whole;
}

} // namespace HovletsTool
