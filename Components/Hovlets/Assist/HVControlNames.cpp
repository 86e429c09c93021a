// SPDX-License-Identifier: Apache-2.0
#include "HVControlNames.h"

#include <QtCore/QRegularExpression>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QWidget>
// QtWidgets in Qt 5, QtGui in Qt 6.
#include <QAction>

namespace Hovlets {

namespace {

constexpr int LongestName = 80;
constexpr int DeepestMenu = 8;

/// Qt's class names have no "_", and begin with "Q" and another capital.
bool isClassOfQt(const QObject *object)
{
    static const QRegularExpression pattern(QStringLiteral("^Q[A-Z][A-Za-z0-9]*$"));
    return pattern.match(QLatin1String(object->metaObject()->className())).hasMatch();
}

/// The menu among the children of \a window with the action in it, or null.
const QMenu *menuWith(const QAction *action, const QWidget *window)
{
    const auto menus = window ? window->findChildren<QMenu *>() : QList<QMenu *>();
    for (const QMenu *menu : menus) {
        if (menu->actions().contains(const_cast<QAction *>(action)))
            return menu;
    }
    return nullptr;
}

QString namedOrNumbered(const QObject *object)
{
    if (!object->objectName().isEmpty())
        return object->objectName();
    const char *name = object->metaObject()->className();
    int place = 0;
    if (object->parent()) {
        const QObjectList &siblings = object->parent()->children();
        for (const QObject *sibling : siblings) {
            if (sibling == object)
                break;
            if (sibling->objectName().isEmpty()
                && qstrcmp(sibling->metaObject()->className(), name) == 0)
                ++place;
        }
    }
    return QStringLiteral("%1[%2]").arg(QLatin1String(name)).arg(place);
}

} // namespace

bool isNamedByQt(const QObject *object)
{
    const QString name = object->objectName();
    return name.startsWith(QLatin1String("qt_")) || name.startsWith(QLatin1String("_q_"));
}

QString nameOf(const QObject *object)
{
    return isNamedByQt(object) ? QString() : object->objectName();
}

QString plainText(const QString &text)
{
    QString plain = text.section(QLatin1Char('\t'), 0, 0);
    static const QRegularExpression mnemonicInBrackets(QStringLiteral("\\(&\\w\\)"));
    plain.remove(mnemonicInBrackets);
    static const QRegularExpression mnemonic(QStringLiteral("&(.)"));
    plain.replace(mnemonic, QStringLiteral("\\1"));
    static const QRegularExpression end(QStringLiteral("[\\s:]*(\\.\\.\\.|\\x{2026})?[\\s:]*$"));
    plain.remove(end);
    plain = plain.simplified();
    return plain.size() <= LongestName ? plain : QString();
}

QString qualifierOf(const QWidget *widget)
{
    for (const QWidget *each = widget; each; each = each->parentWidget()) {
        if (!nameOf(each).isEmpty())
            return nameOf(each);
        if (each->isWindow() && each->windowType() != Qt::Popup)
            return QLatin1String(each->metaObject()->className());
    }
    return {};
}

QStringList formsOf(const QObject *object)
{
    QStringList forms;
    for (const QObject *each = object->parent(); each; each = each->parent()) {
        const auto *widget = qobject_cast<const QWidget *>(each);
        if (!widget || widget->windowType() == Qt::Popup)
            continue;
        if (!nameOf(widget).isEmpty() && (widget->isWindow() || !isClassOfQt(widget)))
            forms += nameOf(widget);
        if (widget->isWindow())
            break;
    }
    return forms;
}

QString menuPathOf(const QAction *action, const QWidget *window)
{
    QString path = plainText(action->text());
    if (path.isEmpty())
        return {};
    const QAction *entry = action;
    for (int depth = 0; depth < DeepestMenu; ++depth) {
        const QMenu *menu = menuWith(entry, window);
        if (!menu || plainText(menu->title()).isEmpty())
            break;
        path.prepend(plainText(menu->title()) + QLatin1Char('/'));
        entry = menu->menuAction();
    }
    return path;
}

QString pathOf(const QObject *object)
{
    QStringList names;
    for (const QObject *each = object; each; each = each->parent()) {
        names.prepend(namedOrNumbered(each));
        if (each->isWidgetType() && static_cast<const QWidget *>(each)->isWindow()
            && static_cast<const QWidget *>(each)->windowType() != Qt::Popup)
            break;
    }
    return names.join(QLatin1Char('/'));
}

} // namespace Hovlets
