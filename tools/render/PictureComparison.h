// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace HovletsTool {

/*!
 * \brief The fraction of pixels, 0 to 1, in which two PNG files differ visibly.
 *
 * It is 1 for pictures of different sizes. Throws a ToolError for a file that cannot be read.
 */
[[nodiscard]] double pictureDifference(const QString &expected, const QString &actual);

} // namespace HovletsTool
