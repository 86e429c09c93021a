// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QString>
#include <QtCore/QVector>
#include <QtGui/QIcon>

class QObject;
class QWidget;

namespace Hovlets {

/// What a program itself says about a control, or about a part of one.
struct ControlTexts
{
    QString label; // what the control shows; empty for what a user has typed
    QString shortcut;
    QString toolTip, statusTip, whatsThis;
    QIcon icon;

    [[nodiscard]] bool isEmpty() const
    {
        return label.isEmpty() && toolTip.isEmpty() && statusTip.isEmpty() && whatsThis.isEmpty();
    }
};

/// A control as HVStandardKeys knows it: an object, and a global position in it.
struct ControlPlace
{
    QObject *object = nullptr;
    QPoint position;
    ControlTexts texts;
};

/*!
 * The controls that \a widget is or contains as parts: entries of a menu, tabs and header sections.
 * Containers, labels and windows count only if they have a tip. Resizes a menu that was never
 * shown, so that its entries have places.
 */
[[nodiscard]] QVector<ControlPlace> controlsOf(QWidget *widget);

} // namespace Hovlets
