// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVShownText.h"

#include <QtCore/QString>

#include <functional>

namespace Hovlets {

/// What markup may hold, and what becomes of it.
struct HVMarkupRules
{
    /// Whether links to documentation topics can be followed. Elsewhere only their label is shown.
    bool topics = false;

    /// Fills a placeholder "%(name)s"; returns it unchanged when it has no value. The value is text
    /// and no markup. Not called when empty.
    std::function<QString(const QString &placeholder)> fill;
};

/// Whether the text holds a tag or a character entity, and is therefore markup.
bool isMarkup(const QString &text);

/*!
 * \brief Markup that anybody may have written, as markup that a text item can show without harm.
 *
 * The result is made from scratch, of known tags and known attributes alone: showing it opens no
 * connection, no file and no font, whatever the text holds. All other tags become visible text. Its
 * tags are balanced and nested within bounds; Qt's parser and layout take a time linear in it. That
 * also holds for this function, which reads each character once.
 */
HVShownText shownMarkup(const QString &text, const HVMarkupRules &rules, HVDisplayBudget &budget);

/// Whether a link's locator names a documentation topic: it has neither a scheme nor a path.
bool isTopic(const QString &locator);

} // namespace Hovlets
