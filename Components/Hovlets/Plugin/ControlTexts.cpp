// SPDX-License-Identifier: Apache-2.0
#include "ControlTexts.h"

#include <QtCore/QVariant>
#include <QtGui/QKeySequence>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QToolButton>
// QtWidgets in Qt 5, QtGui in Qt 6.
#include <QAction>

#include <algorithm>

namespace Hovlets {

namespace {

ControlTexts textsOf(const QAction &action)
{
    ControlTexts texts;
    texts.label = action.text();
    texts.shortcut = action.shortcut().toString(QKeySequence::PortableText);
    texts.toolTip = action.toolTip(); // the text unless the program sets one
    texts.statusTip = action.statusTip();
    texts.whatsThis = action.whatsThis();
    texts.icon = action.icon();
    return texts;
}

/// The text of the label in front of a field.
QString textOfBuddy(const QWidget &field)
{
    const auto labels = field.parentWidget()
            ? field.parentWidget()->findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly)
            : QList<QLabel *>();
    const auto label = std::find_if(labels.begin(), labels.end(), [&field](const QLabel *each) {
        return each->buddy() == &field;
    });
    return label == labels.end() ? QString() : (*label)->text();
}

QString labelOf(const QWidget &widget)
{
    const auto property = [&widget](const char *name) { return widget.property(name).toString(); };
    // In other widgets, the property "text" contains what the user has typed.
    const QString text =
            qobject_cast<const QAbstractButton *>(&widget) ? property("text") : property("title");
    const QString title = qobject_cast<const QDockWidget *>(&widget) ? widget.windowTitle() : text;
    const QString label = title.isEmpty() ? property("accessibleName") : title;
    return label.isEmpty() ? textOfBuddy(widget) : label;
}

ControlTexts textsOf(const QWidget &widget)
{
    const auto *button = qobject_cast<const QAbstractButton *>(&widget);
    const auto *toolButton = qobject_cast<const QToolButton *>(&widget);
    if (toolButton && toolButton->defaultAction())
        return textsOf(*toolButton->defaultAction());
    ControlTexts texts;
    texts.label = labelOf(widget);
    texts.toolTip = widget.toolTip();
    texts.statusTip = widget.statusTip();
    texts.whatsThis = widget.whatsThis();
    if (button) {
        texts.shortcut = button->shortcut().toString(QKeySequence::PortableText);
        texts.icon = button->icon();
    }
    return texts;
}

/// Whether users operate the widget, so that it deserves an entry without a tip.
bool isOperated(const QWidget &widget)
{
    static const char *const classes[] { "QAbstractButton",  "QAbstractSlider", "QAbstractSpinBox",
                                         "QComboBox",        "QDockWidget",     "QGroupBox",
                                         "QKeySequenceEdit", "QLineEdit",       "QPlainTextEdit",
                                         "QTextEdit" };
    return std::any_of(std::begin(classes), std::end(classes),
                       [&widget](const char *name) { return widget.inherits(name); });
}

template <typename Menu> void addEntries(Menu &menu, QVector<ControlPlace> &controls)
{
    const QList<QAction *> actions = menu.actions();
    for (QAction *action : actions) {
        if (!action->isVisible() || action->isSeparator())
            continue;
        const QPoint center = menu.actionGeometry(action).center();
        controls.append({ &menu, menu.mapToGlobal(center), textsOf(*action) });
    }
}

void addTabs(QTabBar &bar, QVector<ControlPlace> &controls)
{
    for (int tab = 0; tab < bar.count(); ++tab) {
        ControlTexts texts;
        texts.label = bar.tabText(tab);
        texts.toolTip = bar.tabToolTip(tab);
        texts.whatsThis = bar.tabWhatsThis(tab);
        texts.icon = bar.tabIcon(tab);
        controls.append({ &bar, bar.mapToGlobal(bar.tabRect(tab).center()), texts });
    }
}

void addSections(QHeaderView &header, QVector<ControlPlace> &controls)
{
    if (header.orientation() != Qt::Horizontal || header.isHidden() || !header.model())
        return;
    for (int section = 0; section < header.count(); ++section) {
        if (header.isSectionHidden(section))
            continue;
        const auto text = [&](int role) {
            return header.model()->headerData(section, Qt::Horizontal, role).toString();
        };
        ControlTexts texts;
        texts.label = text(Qt::DisplayRole);
        texts.toolTip = text(Qt::ToolTipRole);
        texts.statusTip = text(Qt::StatusTipRole);
        texts.whatsThis = text(Qt::WhatsThisRole);
        const QPoint center(header.sectionViewportPosition(section)
                                    + header.sectionSize(section) / 2,
                            header.viewport()->height() / 2);
        controls.append({ header.viewport(), header.viewport()->mapToGlobal(center), texts });
    }
}

} // namespace

QVector<ControlPlace> controlsOf(QWidget *widget)
{
    QVector<ControlPlace> controls;
    if (auto *menu = qobject_cast<QMenu *>(widget)) {
        if (!menu->testAttribute(Qt::WA_WState_Created))
            menu->resize(menu->sizeHint());
        addEntries(*menu, controls);
    } else if (auto *bar = qobject_cast<QMenuBar *>(widget)) {
        addEntries(*bar, controls);
    } else if (auto *bar = qobject_cast<QTabBar *>(widget)) {
        addTabs(*bar, controls);
    } else if (auto *header = qobject_cast<QHeaderView *>(widget)) {
        addSections(*header, controls);
    } else {
        const ControlTexts texts = textsOf(*widget);
        const bool hasTip = !texts.toolTip.isEmpty() || !texts.statusTip.isEmpty()
                || !texts.whatsThis.isEmpty();
        if (hasTip || isOperated(*widget))
            controls.append({ widget, widget->mapToGlobal(widget->rect().center()), texts });
    }
    return controls;
}

} // namespace Hovlets
