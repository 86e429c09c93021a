// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PopupBench.h"

#include <QtCore/QPointer>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtQuick/QQuickItem>

/*!
 * \brief A popup of the manager's whose user interface is white and holds the items to test.
 */
class QmlPopup : public HoverBench
{
public:
    /// Has the manager watch the mouse, with popups that do not hide because it is elsewhere.
    void trackHover();

    /// Shows \a body in a popup of the given size.
    void show(const QByteArray &body, int width = 300, int height = 200);

    /// The item with an object name.
    template <typename Item> Item *item(const char *name)
    {
        return view()->rootObject()->findChild<Item *>(QLatin1String(name));
    }

    /// What the popup's view paints.
    QImage picture() { return view()->grabFramebuffer(); }
    QColor pixel(int x, int y)
    {
        const QImage all = picture();
        return all.pixelColor((QPointF(x, y) * all.devicePixelRatio()).toPoint());
    }

    /// Makes a lossless clip of the popup's resources by the ffmpeg program, from its own sources.
    void makeClip(const QString &name, const QString &pictures) const;
};

/// Whether a decoder made this of pure red.
inline bool isRed(const QColor &colour)
{
    return colour.red() > 250 && colour.green() < 5 && colour.blue() < 5;
}
