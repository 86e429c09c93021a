// SPDX-License-Identifier: Apache-2.0
#include "XmlMistake.h"

#include "ToolError.h"

#include <QtCore/QXmlStreamReader>

namespace HovletsTool {

void refuseMistakes(const QXmlStreamReader &reader, const QString &path)
{
    if (reader.hasError())
        throw ToolError(QStringLiteral("%1:%2:%3: %4")
                                .arg(path)
                                .arg(reader.lineNumber())
                                .arg(reader.columnNumber())
                                .arg(reader.errorString()));
}

} // namespace HovletsTool
