// SPDX-License-Identifier: Apache-2.0
#include <HovletsAssist/HVKeyboardAccess.h>

#include "HVEntryLookup.h"
#include "HVPopupPlace.h"
#include "HVPopupWindow.h"

#include <Hovlets/HVContext.h>
#include <Hovlets/HVInterface.h>
#include <Hovlets/HVScene.h>

#include <QtCore/QPointer>
#include <QtCore/QSize>
#include <QtCore/QTimer>
#include <QtGui/QAccessible>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
// QtWidgets in Qt 5, QtGui in Qt 6.
#include <QAction>

namespace Hovlets {

namespace {

/// The object whose hovlet the key opens.
struct Target
{
    QString key; // empty if there is nothing to open
    QObject *object = nullptr; // a widget or an action
    QWidget *widget = nullptr; // the object itself, or the menu that contains the action
    QRect area; // global
};

QRect globalArea(const QWidget *widget, const QRect &area)
{
    return { widget->mapToGlobal(area.topLeft()), area.size() };
}

Target entryOf(HVInterface &host, QMenu *menu)
{
    QAction *action = menu->activeAction();
    const QString key = action ? host.keyForObject(action) : QString();
    if (!hasEntry(host, key))
        return {};
    return { key, action, menu, globalArea(menu, menu->actionGeometry(action)) };
}

/// The key of a widget, or of the control in a scene for which it receives events.
QString keyOf(HVInterface &host, QWidget *widget)
{
    QObject *control = HVScene::controlOf(widget);
    if (!control) // a scene as a whole is not a control
        return widget->inherits("Hovlets::HVStandIn") ? QString() : host.keyForObject(widget);
    return widget->objectName().isEmpty() ? host.keyForObject(control) : widget->objectName();
}

/// The widget that has the keyboard focus, or else the active window. In a scene, what has its
/// place there.
QWidget *focusedWidget()
{
    QWidget *widget = QApplication::focusWidget();
    if (!widget)
        widget = QApplication::activeWindow();
    HVScene *scene = widget ? nullptr : HVScene::of(QGuiApplication::focusWindow());
    return scene ? scene->focusWidget() : widget;
}

/// The widget, or its nearest parent within the window, that has an entry.
Target nearestWithEntry(HVInterface &host, QWidget *widget)
{
    for (QWidget *w = widget; w; w = w->isWindow() ? nullptr : w->parentWidget()) {
        const QString key = keyOf(host, w);
        if (hasEntry(host, key))
            return { key, w, w, globalArea(w, w->rect()) };
    }
    const QString fallback = fallbackKey(host);
    if (!widget || fallback.isEmpty())
        return {};
    return { fallback, widget, widget, globalArea(widget, widget->rect()) };
}

Target findTarget(HVInterface &host)
{
    if (host.context().get(HVKeySuspended, false).toBool())
        return {};
    if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget()))
        return entryOf(host, menu);
    return nearestWithEntry(host, focusedWidget());
}

bool isKey(const QKeyEvent &event, const QKeySequence &key)
{
    const int modifiers = int(event.modifiers() & ~Qt::KeypadModifier);
    return !key.isEmpty() && QKeySequence(modifiers | event.key()) == key;
}

} // namespace

class Q_DECL_HIDDEN HVKeyboardAccess::Private
{
public:
    bool wantsOpenKey(const QKeyEvent &event) const;
    bool wantsEscape(const QKeyEvent &event) const;
    void hideWithEscape();
    void place();
    void keepWithoutMouse();
    void announce();

    QPointer<HVInterface> host;
    HVKeyboardAccessSettings settings;
    bool enabled = true;

    // The popup that open() opened.
    QPointer<QWidget> popup;
    QPointer<QWidget> focus; // the widget that had the focus
    QPointer<QWidget> control; // the control beside the popup, or its menu
    QRect area; // global
    QString key; // of the entry in the popup
    QMetaObject::Connection menuMoves;

    QString announced; // last announcement about the popup on screen
};

bool HVKeyboardAccess::Private::wantsOpenKey(const QKeyEvent &event) const
{
    if (!isKey(event, settings.openKey))
        return false;
    const bool isShowing = popup && popup->isVisible() && shownKey(popup) == key;
    return isShowing || findTarget(*host).object;
}

bool HVKeyboardAccess::Private::wantsEscape(const QKeyEvent &event) const
{
    return settings.escapeHides && event.key() == Qt::Key_Escape
            && event.modifiers() == Qt::NoModifier && (visiblePopup() || pinnedPopupWithFocus());
}

void HVKeyboardAccess::Private::hideWithEscape()
{
    if (QWidget *shown = visiblePopup())
        shown->hide();
    else if (QWidget *pinned = pinnedPopupWithFocus())
        closePinnedPopup(pinned);
}

/// Moves the popup to a place where it does not hide the control. The library has placed it for a
/// cursor.
void HVKeyboardAccess::Private::place()
{
    if (!popup || !control)
        return;
    const QScreen *screen = HVScene::controlOf(control) ? QGuiApplication::screenAt(area.center())
                                                        : control->screen();
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    popup->move(placeBeside(area, popup->frameGeometry().size(), screen->availableGeometry()));
}

/// Stops the hide timer, which runs because the mouse is elsewhere, as if the mouse were over the
/// popup. The next move of the mouse restarts it.
void HVKeyboardAccess::Private::keepWithoutMouse()
{
    const QPoint local = popup->rect().center();
    const QPoint global = popup->mapToGlobal(local);
    QMouseEvent onPopup(QEvent::MouseMove, local, local, global, Qt::NoButton, Qt::NoButton,
                        Qt::NoModifier);
    host->mouseMoveEventFilter(popup, &onPopup);
}

void HVKeyboardAccess::Private::announce()
{
    QWidget *shown = enabled && settings.announce && host ? visiblePopup() : nullptr;
    const HVPopupWords words = shown ? wordsOf(shown) : HVPopupWords();
    const QString all = words.title + QLatin1Char('\n') + words.text;
    if (!shown || all == announced)
        return;
    announced = all;
    shown->setAccessibleName(words.title);
    shown->setAccessibleDescription(words.text);
    // Qt does not send these for tooltip windows.
    QAccessibleEvent isShown(shown, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&isShown);
    QAccessibleEvent isNews(shown, QAccessible::Alert);
    QAccessible::updateAccessibility(&isNews);
}

HVKeyboardAccess::HVKeyboardAccess(HVInterface &host, const HVKeyboardAccessSettings &settings,
                                   QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->host = &host;
    d->settings = settings;
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
        const bool intoPopup = now && d->popup && d->popup->isAncestorOf(now);
        if (now != d->focus && now != d->popup && !intoPopup)
            close();
    });
    // Items of Qt Quick take the focus without a change of the focus widget.
    connect(qApp, &QGuiApplication::focusObjectChanged, this, [this] {
        if (HVScene::controlOf(d->control))
            close();
    });
    qApp->installEventFilter(this);
}

HVKeyboardAccess::~HVKeyboardAccess() = default;

void HVKeyboardAccess::setEnabled(bool enabled)
{
    if (!enabled)
        close();
    d->enabled = enabled;
}

bool HVKeyboardAccess::isEnabled() const
{
    return d->enabled;
}

bool HVKeyboardAccess::open()
{
    if (!d->host || !d->enabled)
        return false;
    const Target target = findTarget(*d->host);
    if (!target.object)
        return false;
    const QSize offset = d->host->context().get(HVKeyCursorOffset, QSize(35, 30)).toSize();
    const QPoint below = target.area.bottomLeft() - QPoint(offset.width(), offset.height());
    if (!d->host->show(target.key, below, target.object) || !visiblePopup())
        return false;

    d->popup = visiblePopup();
    d->focus = QApplication::focusWidget();
    d->control = target.widget;
    d->area = target.area;
    d->key = shownKey(d->popup);
    d->place();
    d->keepWithoutMouse();
    disconnect(d->menuMoves);
    if (auto *menu = qobject_cast<QMenu *>(target.widget))
        d->menuMoves = connect(menu, &QMenu::hovered, this, &HVKeyboardAccess::close);
    return true;
}

void HVKeyboardAccess::close()
{
    if (isOpen())
        d->popup->hide();
    d->popup.clear();
}

bool HVKeyboardAccess::isOpen() const
{
    return d->popup && d->popup->isVisible() && !isPinned(d->popup) && shownKey(d->popup) == d->key;
}

bool HVKeyboardAccess::eventFilter(QObject *object, QEvent *event)
{
    if (!d->host || !d->enabled)
        return false;
    switch (event->type()) {
    case QEvent::ShortcutOverride: { // if accepted, a key press follows instead of a shortcut
        const auto *key = static_cast<QKeyEvent *>(event);
        if (!d->wantsEscape(*key) && !d->wantsOpenKey(*key))
            return false;
        event->accept();
        return true;
    }
    case QEvent::KeyPress: {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (d->wantsEscape(*key)) {
            d->hideWithEscape();
            return true;
        }
        if (!d->wantsOpenKey(*key))
            return false;
        if (key->isAutoRepeat())
            return true;
        if (isOpen())
            close();
        else
            open();
        return true;
    }
    case QEvent::Hide:
        if (object == d->control)
            close();
        else if (isPopup(object))
            d->announced.clear();
        return false;
    case QEvent::Show:
    case QEvent::Move:
    case QEvent::Resize:
        if (!isPopup(object))
            return false;
        // Deferred until the popup has its content and its place.
        QTimer::singleShot(0, this, [this] { d->announce(); });
        if (event->type() == QEvent::Resize && object == d->popup && isOpen())
            QTimer::singleShot(0, this, [this] { isOpen() ? d->place() : void(); });
        return false;
    default:
        return false;
    }
}

} // namespace Hovlets
