// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PopupBench.h"

#include <QtCore/QPointer>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtQuick/QQuickItem>

/*!
 * \brief The manager's popup, with a white user interface that holds the items to test.
 */
class QmlPopup : public HoverBench
{
public:
    /// Makes the manager watch the mouse. Popups do not hide when the mouse is elsewhere.
    void trackHover();

    /// Shows \a body in a popup of the given size.
    void show(const QByteArray &body, int width = 300, int height = 200);

    /// The item with the given object name.
    template <typename Item> Item *item(const char *name)
    {
        return view()->rootObject()->findChild<Item *>(QLatin1String(name));
    }

    /// The picture that the popup's view paints.
    QImage picture() { return view()->grabFramebuffer(); }
    QColor pixel(int x, int y)
    {
        const QImage all = picture();
        return all.pixelColor((QPointF(x, y) * all.devicePixelRatio()).toPoint());
    }

    /*!
     * How much of \a item is neither black nor white, from 0 to 1.
     *
     * The item's picture has the given size, and fine columns in these two colours. Drawn pixel for
     * pixel, it has no others. Smoothing mixes them.
     */
    double shareOfGreys(const QQuickItem &item, const QSizeF &size);

    /// Makes a lossless clip in the package's resources from one of ffmpeg's own sources.
    void makeClip(const QString &name, const QString &pictures) const;

    /// The source of a clip of 64 x 48 with columns in black and white, one pixel wide.
    static QString columns();
};

/// Whether \a colour is pure red, apart from a decoder's rounding.
inline bool isRed(const QColor &colour)
{
    return colour.red() > 250 && colour.green() < 5 && colour.blue() < 5;
}
