// SPDX-License-Identifier: Apache-2.0
#include "XmlMistake.h"

#include "StartTag.h"
#include "ToolError.h"

#include <QtCore/QXmlStreamReader>

namespace HovletsTool {

void refuseLargeTags(const QByteArray &bytes, const QString &path)
{
    constexpr size_t MostAttributes = 1000;
    QByteArray letters = bytes;
    letters.replace('\0', QByteArray()); // those of UTF-16, as far as they are in ASCII
    if (findLargeTag(letters, MostAttributes))
        throw ToolError(QStringLiteral("%1: an element has more than %2 attributes")
                                .arg(path)
                                .arg(MostAttributes));
}

QString allTextOf(QXmlStreamReader &reader)
{
    QString text;
    for (int depth = 1; depth > 0 && !reader.atEnd();) {
        reader.readNext();
        if (reader.isStartElement())
            ++depth;
        else if (reader.isEndElement())
            --depth;
        else if (reader.isCharacters() || reader.isEntityReference())
            text += reader.text();
    }
    return text;
}

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
