// SPDX-License-Identifier: Apache-2.0
#include "HVPopupWindow.h"

#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtGui/QTextDocument>
#include <QtGui/QTextDocumentFragment>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <algorithm>

namespace Hovlets {

namespace {

QObject *viewOf(const QWidget *popup)
{
    const QObjectList &children = popup->children();
    const auto view = std::find_if(children.begin(), children.end(), [](const QObject *child) {
        return child->inherits("Hovlets::HVView");
    });
    return view == children.end() ? nullptr : *view;
}

QObject *elementOf(const QObject *view)
{
    return view ? view->property("content").value<QObject *>() : nullptr;
}

QString attribute(QObject *element, const char *name)
{
    QString value;
    QMetaObject::invokeMethod(element, "attribute", Q_RETURN_ARG(QString, value),
                              Q_ARG(QString, QLatin1String(name)));
    return value;
}

/// As the popup shows it: translated in the context of the key, then filled in.
QString shownText(QObject *view, const QString &source, const QString &key)
{
    if (source.isEmpty())
        return {};
    QString translated;
    QMetaObject::invokeMethod(view, "translate", Q_RETURN_ARG(QString, translated),
                              Q_ARG(QString, source), Q_ARG(QString, key));
    QString filled;
    QMetaObject::invokeMethod(view, "interpolate", Q_RETURN_ARG(QString, filled),
                              Q_ARG(QString, translated.isEmpty() ? source : translated));
    if (Qt::mightBeRichText(filled))
        filled = QTextDocumentFragment::fromHtml(filled).toPlainText();
    return filled.simplified();
}

/// The texts below \a element in their order; a picture has its description.
QStringList textsBelow(const QObject *element)
{
    QStringList texts;
    const QObjectList &children = element->children();
    for (QObject *child : children) {
        if (child->objectName() == QLatin1String("title")
            || !child->inherits("Hovlets::HVXmlElement"))
            continue;
        const QString own = child->property("content").toString().simplified();
        texts += own.isEmpty() ? attribute(child, "alt") : own;
        texts += textsBelow(child);
    }
    return texts;
}

QString sourceTitle(QObject *element)
{
    const QString title = attribute(element, "title");
    const auto *child =
            element->findChild<QObject *>(QStringLiteral("title"), Qt::FindDirectChildrenOnly);
    return title.isEmpty() && child ? child->property("content").toString().simplified() : title;
}

} // namespace

bool isPopup(const QObject *object)
{
    return object->inherits("Hovlets::HVWidget");
}

bool isPinned(const QWidget *popup)
{
    const QObject *view = viewOf(popup);
    return view && view->property("reserved").toBool();
}

QWidget *visiblePopup()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto popup = std::find_if(windows.begin(), windows.end(), [](const QWidget *window) {
        return window->isVisible() && isPopup(window) && !isPinned(window);
    });
    return popup == windows.end() ? nullptr : *popup;
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
    QObject *element = elementOf(viewOf(popup));
    return element ? attribute(element, "key") : QString();
}

HVPopupWords wordsOf(const QWidget *popup)
{
    QObject *view = viewOf(popup);
    QObject *element = elementOf(view);
    if (!element)
        return {};
    const QString key = attribute(element, "key");
    QStringList texts;
    const QStringList sources = textsBelow(element);
    for (const QString &source : sources)
        texts += shownText(view, source, key);
    texts.prepend(attribute(element, "shortcut"));
    texts.removeAll(QString());
    return { shownText(view, sourceTitle(element), key), texts.join(QLatin1Char('\n')) };
}

} // namespace Hovlets
