// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "FormReader.h"

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtCore/QString>

#include <vector>

namespace HovletsTool {

/// The controls of a program that ran with the plug-in.
struct RunningControls
{
    std::vector<FormObject> objects; // the names are the keys
    QMap<QString, QByteArray> icons; // PNG files by their path in the resources
};

/// Reads the file that the plug-in has written. A control without a tip gets its label as one.
/// Throws a ToolError if the file is missing or has no controls.
[[nodiscard]] RunningControls readRunningControls(const QString &path);

} // namespace HovletsTool
