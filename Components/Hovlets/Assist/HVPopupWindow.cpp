// SPDX-License-Identifier: Apache-2.0
#include "HVPopupWindow.h"

#include <Hovlets/HVPopup.h>
#include <Hovlets/HVXmlElement.h>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtGui/QTextDocument>
#include <QtGui/QTextDocumentFragment>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace Hovlets {

namespace {

/// The text as the popup shows it, without its markup.
QString plainText(const HVPopup &popup, const QString &source, const QString &key)
{
    QString shown = popup.shownText(source, key);
    if (Qt::mightBeRichText(shown))
        shown = QTextDocumentFragment::fromHtml(shown).toPlainText();
    return shown.simplified();
}

/// The texts below \a element in document order, including the descriptions of pictures.
QStringList textsBelow(const HVXmlElement &element)
{
    QStringList texts;
    const QObjectList &children = element.children();
    for (const QObject *object : children) {
        const auto *child = qobject_cast<const HVXmlElement *>(object);
        if (!child || child->getTagName() == QLatin1String("title"))
            continue;
        const QString own = child->content().simplified();
        texts += own.isEmpty() ? child->attribute(QStringLiteral("alt")) : own;
        texts += textsBelow(*child);
    }
    return texts;
}

QString sourceTitle(const HVXmlElement &element)
{
    const QString title = element.attribute(QStringLiteral("title"));
    const auto *child =
            element.findChild<HVXmlElement *>(QStringLiteral("title"), Qt::FindDirectChildrenOnly);
    return title.isEmpty() && child ? child->content().simplified() : title;
}

} // namespace

bool isPopup(const QObject *object)
{
    return !HVPopup(object).isNull();
}

bool isPinned(const QWidget *popup)
{
    return HVPopup(popup).isPinned();
}

QWidget *visiblePopup()
{
    return HVPopup::current().widget();
}

QWidget *pinnedPopupWithFocus()
{
    QWidget *widget = QApplication::focusWidget();
    if (!widget)
        widget = QApplication::activeWindow();
    while (widget && !isPopup(widget))
        widget = widget->parentWidget();
    return widget && isPinned(widget) ? widget : nullptr;
}

void closePinnedPopup(QWidget *popup)
{
    QWidget *parent = popup->parentWidget();
    const bool isDocked = !popup->isWindow() && parent && parent->isWindow();
    (isDocked ? parent : popup)->close();
}

QString shownKey(const QWidget *popup)
{
    const HVXmlElement *entry = HVPopup(popup).content();
    return entry ? entry->attribute(QStringLiteral("key")) : QString();
}

HVPopupWords wordsOf(const QWidget *widget)
{
    const HVPopup popup(widget);
    const QPointer<const HVXmlElement> entry(popup.content());
    if (!entry)
        return {};
    const QString key = entry->attribute(QStringLiteral("key"));
    const QString shortcut = entry->attribute(QStringLiteral("shortcut"));
    const QString title = sourceTitle(*entry);
    const QStringList sources = textsBelow(*entry);
    QStringList texts { shortcut };
    for (const QString &source : sources)
        texts += plainText(popup, source, key);
    texts.removeAll(QString());
    return { plainText(popup, title, key), texts.join(QLatin1Char('\n')) };
}

} // namespace Hovlets
