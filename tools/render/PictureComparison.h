// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace HovletsTool {

/*!
 * \brief How much two PNG files differ: the part of the pixels that do so visibly, 0 to 1.
 *
 * Pictures of different sizes differ wholly. Throws a ToolError for a file that cannot be read.
 */
double pictureDifference(const QString &expected, const QString &actual);

} // namespace HovletsTool
