// SPDX-License-Identifier: Apache-2.0
#include "HVWidgetPrivate.h"

#include "HVPaintNow.h"
#include "HVShowScope.h"

#include <QtGui/QAccessible>
#include <QtQuick/QQuickItem>
#include <QtWidgets/QApplication>

// The levels of a popup: simple, full, pinned.

namespace Hovlets {

namespace {

/// The name of a key in \a setting, which may also be a QKeySequence. As a string, QVariant gives
/// that in the user's language.
QString keyNameIn(const QVariant &setting)
{
    return setting.userType() == QMetaType::QKeySequence
            ? setting.value<QKeySequence>().toString(QKeySequence::PortableText)
            : setting.toString();
}

} // namespace

/// The key for the next level. The host gets a warning for a setting that does not name one.
HVLevelKey HVWidget::readLevelKey() const
{
    const QString text = keyNameIn(d->setting(HVKeyExpandKey));
    const HVLevelKey key(text);
    if (key.isEmpty() && !text.isEmpty() && d->services) {
        const auto warn = [services = d->services.data(), text] {
            services->warnOnce(QStringLiteral("HVKeyExpandKey is \"%1\", which is not one key: "
                                              "write a key and its modifiers, such as \"F1\" or "
                                              "\"Ctrl+Space\"")
                                       .arg(text));
        };
        // The host, if warned here, could delete the popup that is about to show.
        QMetaObject::invokeMethod(d->services, warn, Qt::QueuedConnection);
    }
    return key;
}

void HVWidget::startWatching()
{
    d->hovered->startWatching();
    d->levelKeyWatch->start(d->levelKey); // last: the key takes precedence over those that dismiss
}

/// Whether the key has something to do. Otherwise it is the host's. A popup without a control is
/// not part of the modal dialog that is up.
bool HVWidget::hasNextLevel() const
{
    if (!isVisible() || !d->view || d->pinned || d->retired || d->fade->isFadingOut())
        return false;
    if (QApplication::activeModalWidget() && !referenceWidget())
        return false;
    return d->view->isSimple() ? d->view->hasMore() : d->view->isPinnable() && !d->view->reserved();
}

void HVWidget::showNextLevel()
{
    if (d->view->isSimple())
        return expand();
    d->view->whenIdle([self = QPointer<HVWidget>(this), view = d->view] {
        if (self && view && self->view() == view && self->isVisible())
            view->setReserved(true);
    });
}

/// Turns the simple popup into the full one, once no QML of it is running.
void HVWidget::expand()
{
    if (!d->view)
        return;
    d->view->whenIdle([self = QPointer<HVWidget>(this), view = d->view] {
        if (self && view && self->view() == view)
            self->expandNow();
    });
}

/// The new content, size and place reach the screen in one frame.
void HVWidget::expandNow()
{
    if (d->retired || !d->view->isSimple())
        return;
    const HVShowScope showing;
    const QPointer<HVWidget> self(this);
    d->hovered->stopExpansion();
    d->isChanging = true;
    d->view->expand();
    if (!self)
        return;
    d->isChanging = false;
    if (!d->view || d->retired)
        return;
    d->surface->setHeld(true);
    contentResized();
    if (self)
        takeLook();
    if (self && d->view && isVisible())
        paintNow(*this);
    if (!self)
        return;
    d->surface->setHeld(false);
    if (!d->view || !isVisible() || !d->view->rootObject())
        return;
    QAccessibleEvent changed(d->view->rootObject(), QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&changed);
}

} // namespace Hovlets
