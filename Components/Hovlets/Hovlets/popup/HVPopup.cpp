// SPDX-License-Identifier: Apache-2.0
#include "HVPopup.h"

#include "HVView.h"
#include "HVWidget.h"

#include <QtWidgets/QApplication>

#include <algorithm>

namespace Hovlets {

namespace {

HVView *viewOf(QWidget *popup)
{
    return popup ? static_cast<HVWidget *>(popup)->view() : nullptr;
}

} // namespace

HVPopup::HVPopup(const QObject *object)
    // Takes const objects for searches that only ask whether an object is a popup.
    : m_widget(qobject_cast<HVWidget *>(const_cast<QObject *>(object)))
{
}

HVPopup HVPopup::current()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found = std::find_if(windows.begin(), windows.end(), [](const QWidget *window) {
        const HVPopup popup(window);
        return !popup.isNull() && window->isVisible() && !popup.isPinned();
    });
    return HVPopup(found == windows.end() ? nullptr : *found);
}

bool HVPopup::isNull() const
{
    return !m_widget;
}

QWidget *HVPopup::widget() const
{
    return m_widget;
}

bool HVPopup::isPinned() const
{
    const HVView *view = viewOf(m_widget);
    return view && view->reserved();
}

HVXmlElement *HVPopup::content() const
{
    HVView *view = viewOf(m_widget);
    return view ? view->content() : nullptr;
}

QString HVPopup::shownText(const QString &text, const QString &context) const
{
    HVView *view = viewOf(m_widget);
    if (!view || text.isEmpty())
        return {};
    const QString translated = view->translate(text, context);
    return view->interpolate(translated.isEmpty() ? text : translated);
}

} // namespace Hovlets
