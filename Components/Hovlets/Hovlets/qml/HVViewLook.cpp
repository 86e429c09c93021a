// SPDX-License-Identifier: Apache-2.0
#include "HVViewPrivate.h"

#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtQuick/QQuickItem>

// The look of a view: what its user interface asks of the popup's window, and the colours and the
// font that it takes from the desktop.

namespace Hovlets {

QColor HVView::rimColor() const
{
    return rootObject() ? rootObject()->property("rimColor").value<QColor>() : QColor();
}

QColor HVView::fillColor() const
{
    return rootObject() ? rootObject()->property("fillColor").value<QColor>() : QColor();
}

qreal HVView::cornerRadius() const
{
    return rootObject() ? rootObject()->property("cornerRadius").toReal() : 0;
}

bool HVView::drawsTitleBar() const
{
    return rootObject() && rootObject()->property("drawsTitleBar").toBool();
}

void HVView::setSurface(bool isRounded, bool isFramed)
{
    d->context.setSurface(isRounded, isFramed);
    clearBehindCorners();
}

/// Other user interfaces may rely on the white ground that a view has by default.
void HVView::clearBehindCorners()
{
    setClearColor(d->context.isRounded() && cornerRadius() > 0 ? Qt::transparent : Qt::white);
}

void HVView::refreshTheme()
{
    d->context.refreshTheme(d->services
                            && d->services->settings().get(HVKeyExactToolTipColors).toBool());
}

void HVView::changeEvent(QEvent *event)
{
    HVSceneWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange)
        return;
    const QPointer<HVView> self(this);
    refreshTheme();
    if (self)
        Q_EMIT lookChanged();
}

} // namespace Hovlets
