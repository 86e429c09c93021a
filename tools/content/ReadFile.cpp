// SPDX-License-Identifier: Apache-2.0
#include "ReadFile.h"

#include "ToolError.h"

#include <HVFileBytes.h>
#include <HVLimits.h>

#include <QtCore/QFileInfo>

namespace HovletsTool {

using namespace Hovlets;

QByteArray readFile(const QString &path, qint64 most)
{
    const HVFileBytes file = HVFileBytes::all(path, most);
    if (file.result == HVFileBytes::Result::Read)
        return file.bytes;
    QString problem = file.problem(most);
    if (problem.isNull())
        problem = QFileInfo::exists(path) ? QStringLiteral("permission denied")
                                          : QStringLiteral("no such file");
    throw ToolError(QStringLiteral("%1 cannot be read: %2").arg(path, problem));
}

QByteArray readContentFile(const QString &path)
{
    return readFile(path, HVLimits::current().controlFileSize);
}

} // namespace HovletsTool
