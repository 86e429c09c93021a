// SPDX-License-Identifier: Apache-2.0
#include "HVHoverPopup.h"

#include "HVControlPart.h"
#include "HVView.h"
#include "HVWidget.h"
#include "HVXmlElement.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QList>

#include <utility>

namespace Hovlets {

namespace {

QList<QPointer<HVWidget>> dismissedPopups;
bool deletionIsArranged = false; // for the current application

void deleteDismissedPopups()
{
    deletionIsArranged = false;
    const QList<QPointer<HVWidget>> popups = std::exchange(dismissedPopups, {});
    for (const QPointer<HVWidget> &popup : popups)
        delete popup.data();
}

/*!
 * Deletes \a popup later, but no later than the application: a host that deletes its interface
 * after exec() has no event loop to do it.
 */
void dismiss(HVWidget *popup)
{
    popup->retire();
    dismissedPopups.removeAll(QPointer<HVWidget>()); // which the event loop has deleted already
    dismissedPopups.append(popup);
    if (!deletionIsArranged)
        qAddPostRoutine(&deleteDismissedPopups);
    deletionIsArranged = true;
}

} // namespace

HVHoverPopup::~HVHoverPopup()
{
    if (m_widget)
        dismiss(m_widget);
}

void HVHoverPopup::prepare(HVManager *manager, QWidget *parent)
{
    if (m_widget) {
        m_widget->setParent(parent);
        return;
    }
    m_widget = new HVWidget(manager, parent, nullptr);
    m_widget->setView(new HVView(manager, m_widget));
}

void HVHoverPopup::prepareForContent(HVManager *manager)
{
    if (view() && view()->isBusy()) {
        m_widget->hide();
        dismiss(m_widget);
        release();
    }
    prepare(manager, nullptr);
}

void HVHoverPopup::release()
{
    m_widget.clear();
}

HVWidget *HVHoverPopup::widget() const
{
    return m_widget;
}

HVView *HVHoverPopup::view() const
{
    return m_widget ? m_widget->view() : nullptr;
}

HVXmlElement *HVHoverPopup::content() const
{
    return view() ? view()->content() : nullptr;
}

bool HVHoverPopup::isVisible() const
{
    return m_widget && m_widget->isVisible();
}

bool HVHoverPopup::isShowing(const QString &key) const
{
    return isVisible() && content() && content()->attribute(QStringLiteral("key")) == key;
}

bool HVHoverPopup::keep()
{
    m_widget->showAnimated();
    return true;
}

bool HVHoverPopup::keepOrHide(const QPoint &position, const QPointer<QWidget> &hovered)
{
    if (!isVisible())
        return false;
    const bool isSafe = m_widget->isSafe(position); // may run code of the host
    if (!isVisible())
        return false;
    const bool hasToolTip =
            hovered && (!hovered->toolTip().isEmpty() || hasPartToolTip(*hovered, position));
    if (!isVisible())
        return false; // a model of the host was asked as well
    if (isSafe && !hasToolTip)
        return keep();
    m_widget->hideAnimated();
    return false;
}

void HVHoverPopup::widgetWasClicked(const QWidget *widget)
{
    if (!isVisible() || widget == m_widget || m_widget->isAncestorOf(widget))
        return;
    if (view() && view()->stayOpen())
        m_widget->activateWindow();
    else
        m_widget->hide();
}

} // namespace Hovlets
