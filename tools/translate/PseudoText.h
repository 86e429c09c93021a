// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace HovletsTool {

/*!
 * \brief A text that looks translated but stays readable, such as "[Þéñ ~~]" for "Pen".
 *
 * Letters get accents, brackets show where the text begins and ends, and \a expansion per cent more
 * characters show whether a longer translation would have room. Tags, entities and placeholders
 * stay as they are.
 */
[[nodiscard]] QString pseudoText(const QString &text, int expansion);

} // namespace HovletsTool
