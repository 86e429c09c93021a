// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <functional>
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

/// Returns the path of a file in the resources of an entry; empty if it is missing.
using FindResource = std::function<QString(const QString &name)>;

/// The texts of an entry, as the library looks them up when the default user interface shows it.
/// Pictures and clips may be missing; captions are those in the files.
[[nodiscard]] std::vector<TranslatableText> textsOf(const Hovlets::HVXmlElement &entry,
                                                    const FindResource &find);

/// The texts of the default user interface itself, such as those for screen readers.
[[nodiscard]] const std::vector<TranslatableText> &userInterfaceTexts();

} // namespace HovletsTool
