// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Patience.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QDebug>
#include <QtCore/QProcess>
#include <QtCore/QRect>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtTest/QTest>

#include <algorithm>
#include <iterator>

/// A picture of the whole X display. On Wayland, programs cannot take a picture of the screen, but
/// the outputs of with-wayland are windows of an X display.
inline QImage pictureOfDisplay()
{
    QProcess import;
    import.start(QStringLiteral("import"),
                 { QStringLiteral("-window"), QStringLiteral("root"), QStringLiteral("bmp:-") });
    import.waitForFinished();
    const QImage picture = QImage::fromData(import.readAllStandardOutput(), "BMP");
    if (picture.isNull())
        qFatal("import took no picture of the display");
    return picture;
}

/// The smallest rectangle that contains all pixels of this colour on the display; null without any.
inline QRect placeOnDisplay(const QColor &color)
{
    const QImage picture = pictureOfDisplay().convertToFormat(QImage::Format_RGB32);
    QRect place;
    for (int y = 0; y < picture.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        const auto isColor = [&](QRgb pixel) { return pixel == color.rgb(); };
        const auto *const end = line + picture.width();
        const auto *const first = std::find_if(line, end, isColor);
        if (first == end)
            continue;
        const auto *const last = std::find_if(std::make_reverse_iterator(end),
                                              std::make_reverse_iterator(line), isColor)
                                         .base()
                - 1;
        place |= QRect(QPoint(int(first - line), y), QPoint(int(last - line), y));
    }
    return place;
}

/// Waits until the colour \a appears at a place on the display, which takes a place and returns
/// whether it is right. Returns false if that does not happen.
template <typename Condition> bool colorAppears(const QColor &color, Condition appears)
{
    const QDeadlineTimer deadline(Patience);
    QRect place;
    do {
        QTest::qWait(20);
        place = placeOnDisplay(color);
        if (appears(place))
            return true;
    } while (!deadline.hasExpired());
    qWarning() << "the colour is at" << place;
    return false;
}
