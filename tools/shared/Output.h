// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>

namespace HovletsTool {

// Standard output and standard error. Text that cannot be written to standard output throws a
// ToolError, at once or in flushOutput(). A reader that closes the pipe early, such as `head`, is
// not an error.

void printText(const QString &text);
void printJson(const QJsonObject &object);
void flushOutput();

/// Prints one line to standard error, after the program's name.
void printError(const QString &message);

} // namespace HovletsTool
