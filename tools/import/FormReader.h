// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <vector>

namespace HovletsTool {

/// Where a text is, as its translations know it.
struct FormTextPlace
{
    QString context; // the form's class
    QString comment; // tells apart equal texts with different translations
};

/// A text of a form, or one that several forms share.
struct FormText
{
    QString text = {};
    std::vector<FormTextPlace> places = {}; // none if it is not to be translated

    [[nodiscard]] bool isEmpty() const { return text.isEmpty(); }
};

/// A widget or an action in a Qt Designer form or in a running program.
struct FormObject
{
    QString name;
    QString form; // the object name of the form's root, as in form-qualified keys
    FormText label = {}; // what the control shows: its text or title
    FormText shortcut = {};
    FormText toolTip = {}, statusTip = {}, whatsThis = {};
    QString icon = {}; // a path in the resources; empty for none
};

/// Reads the named objects of a form that have a tooltip, a status tip or a What's This text.
/// Throws a ToolError.
[[nodiscard]] std::vector<FormObject> readForm(const QString &path);

} // namespace HovletsTool
