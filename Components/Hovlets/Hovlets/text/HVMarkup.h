// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVShownText.h"

#include <QtCore/QString>

#include <functional>

namespace Hovlets {

/// Determines which markup is permitted, and how it is converted.
struct HVMarkupRules
{
    /// Whether links to documentation topics can be followed. Otherwise only their labels are
    /// shown.
    bool topics = false;

    /// Returns the value for a placeholder "%(name)s", or the placeholder unchanged if it has none.
    /// The value is plain text. May be empty; placeholders then stay.
    std::function<QString(const QString &placeholder)> fill;
};

/// Whether the text contains a tag or a character entity, which makes it markup.
bool isMarkup(const QString &text);

/*!
 * \brief Converts untrusted markup to markup that a text item can show safely.
 *
 * Writes only known tags and attributes: showing the result opens no connection, file or font,
 * whatever the text contains. All other tags become visible text. The result is balanced and its
 * nesting limited; Qt's parser and layout take linear time for it. So does this function, which
 * reads each character once.
 */
HVShownText shownMarkup(const QString &text, const HVMarkupRules &rules, HVDisplayBudget &budget);

/// Whether a link's locator names a documentation topic: it has neither a scheme nor a path.
bool isTopic(const QString &locator);

} // namespace Hovlets
