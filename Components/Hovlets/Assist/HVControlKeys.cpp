// SPDX-License-Identifier: Apache-2.0
#include "HVControlKeys.h"

#include "HVControlNames.h"
#include "HVControlWalk.h"

#include <QtCore/QMetaEnum>
#include <QtCore/QVariant>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolBox>
#include <QtWidgets/QToolButton>
// QtWidgets in Qt 5, QtGui in Qt 6.
#include <QAction>

#include <algorithm>

namespace Hovlets {

namespace {

/// Parents of parts of parts; Qt's own controls are not deeper.
constexpr int DeepestPart = 5;

bool isInMainWindow(const QObject *object)
{
    for (const QObject *each = object; each; each = each->parent()) {
        if (qobject_cast<const QMainWindow *>(each))
            return true;
        if (each->isWidgetType() && static_cast<const QWidget *>(each)->windowType() == Qt::Dialog)
            return false;
    }
    return false;
}

/// Docks and tool bars keep their keys while they float.
bool hasKeys(const QWidget *widget, bool windowsHaveKeys)
{
    return windowsHaveKeys || !widget->isWindow() || qobject_cast<const QDockWidget *>(widget)
            || qobject_cast<const QToolBar *>(widget) || qobject_cast<const QMenu *>(widget);
}

/// Widgets that a user knows by a text.
bool isKnownByLabel(const QWidget *widget)
{
    static const char *const classes[] { "QAbstractButton",  "QAbstractItemView", "QAbstractSlider",
                                         "QAbstractSpinBox", "QComboBox",         "QGroupBox",
                                         "QKeySequenceEdit", "QLineEdit",         "QPlainTextEdit",
                                         "QTextEdit" };
    return std::any_of(std::begin(classes), std::end(classes),
                       [&](const char *name) { return widget->inherits(name); });
}

void addAction(HVControlKeys &keys, const QAction *action, const QWidget *window, const QRect &area)
{
    if (action->isSeparator())
        return;
    keys.addName(nameOf(action), action, area);
    if (action->menu())
        keys.addName(nameOf(action->menu()), action->menu(), area);
    if (!isNamedByQt(action))
        keys.add(menuPathOf(action, window), area);
}

void addDialogButton(HVControlKeys &keys, const QWidget *widget, const QRect &area)
{
    const auto *box = qobject_cast<const QDialogButtonBox *>(widget->parentWidget());
    auto *button = qobject_cast<QAbstractButton *>(const_cast<QWidget *>(widget));
    if (!box || !button || box->standardButton(button) == QDialogButtonBox::NoButton)
        return;
    const auto names = QMetaEnum::fromType<QDialogButtonBox::StandardButtons>();
    const QString name = QLatin1String(names.valueToKey(box->standardButton(button)));
    keys.addName(qualifierOf(box) + QLatin1Char('/') + name, box, area);
}

/// A dock's button has a key of its own, and one for such buttons of all docks.
void addDockButton(HVControlKeys &keys, const QWidget *widget, const QRect &area)
{
    const QLatin1String prefix("qt_dockwidget_"), suffix("button");
    const QString name = widget->objectName();
    if (!name.startsWith(prefix) || !qobject_cast<const QDockWidget *>(widget->parentWidget()))
        return;
    const QString what = name.mid(prefix.size()).remove(suffix);
    keys.addName(qualifierOf(widget->parentWidget()) + QLatin1Char('/') + what, widget, area);
    keys.add(name, area);
}

/// The button of a page in a tool box.
void addToolBoxButton(HVControlKeys &keys, const QWidget *widget, const QRect &area)
{
    const auto *box = qobject_cast<const QToolBox *>(widget->parentWidget());
    const auto *button = qobject_cast<const QAbstractButton *>(widget);
    if (!box || !button || !isNamedByQt(button))
        return;
    for (int page = 0; page < box->count(); ++page) {
        if (box->itemText(page) == button->text())
            keys.addName(nameOf(box->widget(page)), box, area);
    }
    keys.addName(qualifierOf(box) + QLatin1Char('/') + plainText(button->text()), box, area);
}

void addWidget(HVControlKeys &keys, const QWidget *widget)
{
    const QRect area = areaOf(widget);
    if (const auto *button = qobject_cast<const QToolButton *>(widget)) {
        if (button->defaultAction() && fixKey(keys, button->defaultAction(), area))
            return;
        if (button->defaultAction())
            addAction(keys, button->defaultAction(), widget->window(), area);
    }
    keys.addName(nameOf(widget), widget, area);
    if (const auto *button = qobject_cast<const QToolButton *>(widget); button && button->menu())
        keys.addName(nameOf(button->menu()), widget, area);
    addDialogButton(keys, widget, area);
    addDockButton(keys, widget, area);
    addToolBoxButton(keys, widget, area);
    if (!keys.candidates.isEmpty() || ownerOf(widget) || !isKnownByLabel(widget))
        return;
    const QString label = plainText(labelOf(widget));
    if (!label.isEmpty())
        keys.add(qualifierOf(widget) + QLatin1Char('/') + label, area);
}

HVControlKeys keysOfWhole(const QObject *object, bool windowsHaveKeys, int depth)
{
    HVControlKeys keys;
    const auto *widget = qobject_cast<const QWidget *>(object);
    keys.path = pathOf(object);
    if (fixKey(keys, object, widget ? areaOf(widget) : QRect()))
        return keys;
    if (const auto *action = qobject_cast<const QAction *>(object)) {
        const auto *parent = qobject_cast<const QWidget *>(action->parent());
        addAction(keys, action, parent ? parent->window() : nullptr, {});
        return keys;
    }
    if (!widget) {
        keys.add(nameOf(object), {});
        return keys;
    }
    if (!hasKeys(widget, windowsHaveKeys))
        return keys;
    addWidget(keys, widget);
    const QWidget *owner = ownerOf(widget);
    // A tooltip of the part itself says more about it than the entry of the whole.
    if (!keys.isFixed && owner && depth > 0 && widget->toolTip().isEmpty())
        keys.add(keysOfWhole(owner, windowsHaveKeys, depth - 1));
    return keys;
}

} // namespace

void HVControlKeys::add(const QString &key, const QRect &area)
{
    const auto isKnown = [&](const HVKeyCandidate &candidate) { return candidate.key == key; };
    if (!key.isEmpty() && std::none_of(candidates.begin(), candidates.end(), isKnown))
        candidates.append({ key, area });
}

void HVControlKeys::addName(const QString &name, const QObject *scope, const QRect &area)
{
    if (name.isEmpty() || name.endsWith(QLatin1Char('/')))
        return;
    const QStringList forms = formsOf(scope);
    const int first = int(candidates.size());
    for (const QString &form : forms) {
        if (!name.startsWith(form + QLatin1Char('/')))
            add(form + QLatin1Char('/') + name, area);
    }
    add(name, area);
    if (first > 0)
        return;
    // The same names recur in dialogs, but hardly in the main window.
    const bool isUnique = forms.size() < 2 && isInMainWindow(scope);
    m_preferred = isUnique ? int(candidates.size()) - 1 : 0;
}

void HVControlKeys::add(const HVControlKeys &other)
{
    if (candidates.isEmpty())
        m_preferred = other.m_preferred;
    for (const HVKeyCandidate &candidate : other.candidates)
        add(candidate.key, candidate.area);
}

void HVControlKeys::fix(const QString &key, const QRect &area)
{
    candidates.clear();
    m_preferred = 0;
    add(key, area);
    isFixed = true;
}

const HVKeyCandidate *HVControlKeys::preferred() const
{
    return m_preferred < candidates.size() ? &candidates.at(m_preferred) : nullptr;
}

QStringList HVControlKeys::keys() const
{
    QStringList all;
    for (const HVKeyCandidate &candidate : candidates)
        all += candidate.key;
    return all;
}

QRect areaOf(const QWidget *widget)
{
    return { widget->mapToGlobal(QPoint(0, 0)), widget->size() };
}

bool fixKey(HVControlKeys &keys, const QObject *object, const QRect &area)
{
    const QVariant key = object->property("hovletKey");
    if (!key.isValid())
        return false;
    keys.fix(key.toString(), area);
    return true;
}

HVControlKeys keysOfWhole(const QObject *object, bool windowsHaveKeys)
{
    return keysOfWhole(object, windowsHaveKeys, DeepestPart);
}

const QWidget *ownerOf(const QWidget *part)
{
    const QWidget *parent = part->parentWidget();
    if (!parent)
        return nullptr;
    if (parent->inherits("QComboBoxPrivateContainer"))
        return parent->parentWidget();
    if (isNamedByQt(part))
        return parent;
    if (!part->objectName().isEmpty())
        return nullptr;
    const bool isInField = (qobject_cast<const QLineEdit *>(part)
                            && (qobject_cast<const QComboBox *>(parent)
                                || qobject_cast<const QAbstractSpinBox *>(parent)))
            || (qobject_cast<const QAbstractButton *>(part)
                && qobject_cast<const QLineEdit *>(parent));
    const bool isInView = qobject_cast<const QHeaderView *>(part)
            && qobject_cast<const QAbstractItemView *>(parent);
    return isInField || isInView || qobject_cast<const QScrollBar *>(part) ? parent : nullptr;
}

} // namespace Hovlets
