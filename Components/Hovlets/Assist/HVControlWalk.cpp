// SPDX-License-Identifier: Apache-2.0
#include "HVControlWalk.h"

#include "HVControlNames.h"

#include <Hovlets/HVPopup.h>
#include <QtCore/QHash>
#include <QtCore/QVariant>
#include <QtWidgets/QApplication>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QWidget>
// QtWidgets in Qt 5, QtGui in Qt 6.
#include <QAction>

#include <algorithm>

namespace Hovlets {

namespace {

constexpr int LongestLabel = 80;

bool inheritsAny(const QObject *object, const QStringList &classes)
{
    return std::any_of(classes.begin(), classes.end(), [object](const QString &name) {
        return object->inherits(name.toLatin1().constData());
    });
}

/// Controls whose child widgets are only parts of them.
bool isClosed(const QWidget *widget)
{
    static const QStringList classes {
        QStringLiteral("QAbstractButton"),  QStringLiteral("QAbstractItemView"),
        QStringLiteral("QAbstractSlider"),  QStringLiteral("QAbstractSpinBox"),
        QStringLiteral("QCalendarWidget"),  QStringLiteral("QComboBox"),
        QStringLiteral("QKeySequenceEdit"), QStringLiteral("QLineEdit"),
        QStringLiteral("QPlainTextEdit"),   QStringLiteral("QTabBar"),
        QStringLiteral("QTextEdit")
    };
    return inheritsAny(widget, classes);
}

/// Containers. They do not count as controls, whatever their focus policy.
bool isContainer(const QWidget *widget)
{
    static const QStringList classes {
        QStringLiteral("QDockWidget"), QStringLiteral("QLabel"),     QStringLiteral("QMainWindow"),
        QStringLiteral("QMdiArea"),    QStringLiteral("QMenu"),      QStringLiteral("QMenuBar"),
        QStringLiteral("QScrollArea"), QStringLiteral("QSizeGrip"),  QStringLiteral("QSplitter"),
        QStringLiteral("QStatusBar"),  QStringLiteral("QTabWidget"), QStringLiteral("QToolBar"),
        QStringLiteral("QToolBox"),
    };
    const auto *group = qobject_cast<const QGroupBox *>(widget);
    return (group && !group->isCheckable()) || inheritsAny(widget, classes);
}

bool isInteractive(const QWidget *widget)
{
    return !widget->toolTip().isEmpty()
            || (!isContainer(widget) && (isClosed(widget) || widget->focusPolicy() != Qt::NoFocus));
}

/// Parts of Qt's own controls that can contain widgets of the host; there are no others.
bool holdsHostWidgets(const QWidget *part)
{
    return part->objectName() == QLatin1String("qt_scrollarea_viewport")
            || part->inherits("QStackedWidget");
}

bool isPopupOrToolTip(const QWidget *widget)
{
    return !HVPopup(widget).isNull() || widget->inherits("QTipLabel")
            || widget->inherits("QComboBoxPrivateContainer")
            || (widget->isWindow() && widget->windowType() == Qt::SplashScreen);
}

class Walk
{
public:
    Walk(const QStringList &ignored, const std::function<void(const HVVisibleObject &)> &visit)
        : m_ignored(ignored)
        , m_visit(visit)
    {
    }

    void enter(QWidget *widget, const QString &name, const QStringList &parents)
    {
        if (!widget->isVisible() || isPopupOrToolTip(widget) || inheritsAny(widget, m_ignored))
            return;
        if (!isNamedByQt(widget)) {
            const QRect area(widget->mapTo(widget->window(), QPoint(0, 0)), widget->size());
            m_visit({ widget, widget, area, isInteractive(widget), name, parents });
        }
        if (auto *menu = qobject_cast<QMenu *>(widget))
            enterEntries(menu, parents + QStringList { name });
        if (!isClosed(widget) && (!isNamedByQt(widget) || holdsHostWidgets(widget)))
            enterChildren(widget, parents + QStringList { name });
    }

    void enterWindows()
    {
        QHash<QString, int> nameless;
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows)
            enter(window, nameOf(window, nameless), {});
    }

private:
    static QString nameOf(const QObject *object, QHash<QString, int> &nameless)
    {
        if (!object->objectName().isEmpty())
            return object->objectName();
        const QString name = QLatin1String(object->metaObject()->className());
        return QStringLiteral("%1[%2]").arg(name).arg(nameless[name]++);
    }

    void enterChildren(const QWidget *widget, const QStringList &parents)
    {
        QHash<QString, int> nameless;
        const QObjectList &children = widget->children();
        for (QObject *object : children) {
            auto *child = object->isWidgetType() ? static_cast<QWidget *>(object) : nullptr;
            if (!child || child->isWindow())
                continue;
            enter(child, nameOf(child, nameless), parents);
        }
    }

    void enterEntries(QMenu *menu, const QStringList &parents)
    {
        QHash<QString, int> nameless;
        const QList<QAction *> actions = menu->actions();
        for (QAction *action : actions) {
            if (!action->isVisible() || action->isSeparator() || action->menu())
                continue;
            QRect area = menu->actionGeometry(action);
            area.moveTopLeft(menu->mapTo(menu->window(), area.topLeft()));
            m_visit({ action, menu, area, true, nameOf(action, nameless), parents });
        }
    }

    const QStringList &m_ignored;
    const std::function<void(const HVVisibleObject &)> &m_visit;
};

/// The text of the label that has the field as its buddy.
QString textOfBuddy(const QObject *object)
{
    if (!object->isWidgetType() || !object->parent())
        return {};
    const auto labels =
            object->parent()->findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly);
    const auto label = std::find_if(labels.begin(), labels.end(), [object](const QLabel *label) {
        return label->buddy() == object;
    });
    return label == labels.end() ? QString() : (*label)->text();
}

} // namespace

void walkVisibleObjects(const QStringList &ignoredClasses,
                        const std::function<void(const HVVisibleObject &)> &visit)
{
    Walk(ignoredClasses, visit).enterWindows();
}

QString labelOf(const QObject *object)
{
    // In other widgets, the property "text" contains what the user has typed.
    const bool hasWords = object->inherits("QAbstractButton") || object->inherits("QAction")
            || object->inherits("QLabel");
    const auto property = [object](const char *name) { return object->property(name).toString(); };
    const QString candidates[] { hasWords ? property("text") : QString(), property("title"),
                                 property("accessibleName"), textOfBuddy(object),
                                 property("toolTip") };
    for (QString text : candidates) {
        // Without the mnemonic's mark.
        const QString line =
                text.remove(QLatin1Char('&')).section(QLatin1Char('\n'), 0, 0).simplified();
        if (!line.isEmpty())
            return line.left(LongestLabel);
    }
    return {};
}

} // namespace Hovlets
