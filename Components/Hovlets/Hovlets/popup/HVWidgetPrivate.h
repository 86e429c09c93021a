// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVHoveredControl.h"
#include "HVLevelKeyWatch.h"
#include "HVPopupFade.h"
#include "HVPopupGeometry.h"
#include "HVPopupServices.h"
#include "HVSurface.h"
#include "HVView.h"
#include "HVWidget.h"
#include "HVWindowSystem.h"

#include <QtCore/QPointer>
#include <QtCore/QTimer>

namespace Hovlets {

/// The members of a popup. Showing, hiding and placement have a source each.
class HVWidget::Private
{
public:
    Private(HVWidget &popup, HVPopupServices *services, QWidget *reference)
        : services(services)
        , fade(new HVPopupFade(popup))
        , hideTimer(new QTimer(&popup))
        , hovered(new HVHoveredControl(popup, services, reference))
        , geometry(popup)
        , surface(new HVSurface(popup, geometry))
        , levelKeyWatch(new HVLevelKeyWatch([&popup] { return popup.hasNextLevel(); }, &popup))
    {
        geometry.setControl(reference);
        hideTimer->setSingleShot(true);
    }

    QVariant setting(contextKey key) const { return settingOf(services, key); }

    int fadeDuration(contextKey key) const
    {
        return windowsHaveOpacity() ? setting(key).toInt() : 0;
    }

    QPointer<HVPopupServices> services; // null after the manager is destroyed
    QPointer<HVView> view;

    // Children of the popup
    HVPopupFade *fade;
    QTimer *hideTimer;
    HVHoveredControl *hovered;

    HVPopupGeometry geometry;
    HVSurface *surface; // child of the popup
    HVLevelKeyWatch *levelKeyWatch; // child of the popup; runs while it is up
    HVLevelKey levelKey; // of the current content
    // Radius and fill of the last full repaint. Changing either causes a full repaint. The radius
    // is 0 if every repaint draws the outline as well.
    qreal paintedRadius = 0;
    QColor paintedFill;

    bool isChanging = false; // the view loads content, whose size is final when it returns
    bool pinned = false;
    bool retired = false;
};

} // namespace Hovlets
