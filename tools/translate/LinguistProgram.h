// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace HovletsTool {

/// One of Qt's programs for translation files, of the Qt that this program uses.
class LinguistProgram
{
public:
    /// Throws a ToolError if the program is not installed.
    /// \param name such as "lupdate"
    explicit LinguistProgram(const QString &name);

    /// Runs the program until it ends. Throws a ToolError with its messages if it fails, and ends
    /// it if it takes minutes.
    void run(const QStringList &arguments) const;

private:
    QString m_path;
};

} // namespace HovletsTool
