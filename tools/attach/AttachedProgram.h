// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace HovletsTool {

/// A program that is started with the plug-in for applications without Hovlets.
class AttachedProgram
{
public:
    /*!
     * Finds the program and the plug-in for its Qt. Throws a ToolError if one of them is missing.
     * \param name a path, or a name to look for in PATH
     * \param qtMajor the major version of the program's Qt; 0 to read it from the program
     */
    AttachedProgram(const QString &name, int qtMajor);

    /// Runs the program until it ends, and returns its exit status. The plug-in reads \a plan,
    /// which docs/attach.md describes.
    [[nodiscard]] int run(const QStringList &arguments, const QJsonObject &plan) const;

private:
    QString m_program;
    QString m_plugins; // the folder of plug-ins
};

/// The folder of the packages that come with the library.
[[nodiscard]] QString defaultPackages();

} // namespace HovletsTool
