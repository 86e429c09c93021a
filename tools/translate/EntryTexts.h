// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <vector>

namespace Hovlets {
class HVXmlElement;
}

namespace HovletsTool {

/// A text that popups look up in a translation file.
struct TranslatableText
{
    QString context;
    QString source;
    QString comment; ///< For the translator: what the text is in the popup.
};

/// The texts of an entry, as the library looks them up when the default user interface shows it.
[[nodiscard]] std::vector<TranslatableText> textsOf(const Hovlets::HVXmlElement &entry);

/// The texts of the default user interface itself, such as those for screen readers.
[[nodiscard]] const std::vector<TranslatableText> &userInterfaceTexts();

} // namespace HovletsTool
