// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <stdexcept>

namespace HovletsTool {

/// Ends the program with exit status 2. The message says what is wrong and what to do about it.
class ToolError : public std::runtime_error
{
public:
    explicit ToolError(const QString &message)
        : std::runtime_error(message.toStdString())
    {
    }

    [[nodiscard]] QString message() const { return QString::fromUtf8(what()); }
};

} // namespace HovletsTool
