// SPDX-License-Identifier: Apache-2.0
#include "AttachedHost.h"

#include <QtGui/QCursor>
#include <QtGui/QKeySequence>
#include <QtWidgets/QMenu>
#include <QtWidgets/QToolButton>
// QtWidgets in Qt 5, QtGui in Qt 6.
#include <QAction>

#include <cstdio>

namespace Hovlets {

namespace {

HVStandardKeysSettings keysWith(const QString &rules)
{
    HVStandardKeysSettings settings;
    settings.rulesFile = rules;
    return settings;
}

/// The action of a button, or the one under the mouse in a menu; null if there is none.
const QAction *actionOf(const QObject *object)
{
    if (const auto *menu = qobject_cast<const QMenu *>(object))
        return menu->actionAt(menu->mapFromGlobal(QCursor::pos()));
    const auto *button = qobject_cast<const QToolButton *>(object);
    return button ? button->defaultAction() : qobject_cast<const QAction *>(object);
}

} // namespace

AttachedHost::AttachedHost(HVContext &settings, const QStringList &dataPaths, const QString &rules)
    : HVInterface(settings, dataPaths)
    , m_keys(*this, keysWith(rules))
{
    const QStringList errors = m_keys.ruleErrors();
    for (const QString &error : errors)
        printMessage(error);
}

QString AttachedHost::keyForObject(QObject *object)
{
    return m_keys.keyFor(object);
}

QString AttachedHost::shortCutForObject(const QString &key, QObject *object,
                                        const QString &shortcut)
{
    QKeySequence sequence;
    if (const QAction *action = actionOf(object))
        sequence = action->shortcut();
    else if (const auto *button = qobject_cast<const QAbstractButton *>(object))
        sequence = button->shortcut();
    if (sequence.isEmpty())
        return HVInterface::shortCutForObject(key, object, shortcut);
    return sequence.toString(QKeySequence::NativeText);
}

void AttachedHost::handleMessage(HVMessageType type, const QString &message)
{
    Q_UNUSED(type)
    printMessage(message);
}

void printMessage(const QString &message)
{
    std::fprintf(stderr, "hovlets: %s\n", message.toLocal8Bit().constData());
}

} // namespace Hovlets
