// SPDX-License-Identifier: Apache-2.0
#include "LibraryParse.h"

#include "XmlDocument.h"

#include <HVEntryScan.h>
#include <HVLimits.h>
#include <HVXmlParser.h>

#include <QXmlInputSource>

#include <algorithm>

namespace HovletsTool {

using namespace Hovlets;

namespace {

int buildNothing(const QString &, const QXmlAttributes &, void *)
{
    return HVXmlParser::SkipElement;
}

class Parser : public HVXmlParser
{
public:
    Parser()
        : HVXmlParser(&buildNothing)
    {
    }

    bool fatalError(const QXmlParseException &exception) override
    {
        position = { std::max(1, exception.lineNumber()), std::max(1, exception.columnNumber()) };
        return HVXmlParser::fatalError(exception);
    }

    Position position;
};

} // namespace

std::optional<MetLimit> findMetLimit(const XmlDocument &document)
{
    if (!document.bytes().contains("<!DOCTYPE"))
        return std::nullopt;
    QXmlInputSource source;
    source.setData(document.bytes());
    Parser parser;
    qDeleteAll(parser.read(source));
    if (parser.limitMet().isNull())
        return std::nullopt;
    return MetLimit { parser.limitMet(), parser.position };
}

HVEntryCut partToParse(const XmlDocument &document, const QString &key)
{
    if (document.isConverted() || !HVEntryScan(key).isPlainFile(document.bytes()))
        return {};
    const HVLimits limits = HVLimits::current();
    return withoutOtherEntries(document.bytes(), key, limits.nestingDepth, limits.parsedSize);
}

std::optional<MetLimit> findParseLimit(const XmlDocument &document, qint64 size, qint64 &around)
{
    around = 0;
    if (size <= HVLimits::current().parsedSize || !document.isWellFormed())
        return std::nullopt;
    const HVEntryCut cut = partToParse(document, QString(QChar(1))); // no key in XML
    if (cut.state == HVEntryCut::Done) {
        around = cut.bytes.size();
        return std::nullopt;
    }
    const bool isWhole = cut.state == HVEntryCut::InDoubt;
    return MetLimit { parseLimitText(),
                      document.position(isWhole ? 0 : static_cast<int>(cut.offset)) };
}

QString parseLimitText()
{
    return QStringLiteral("more than %1 bytes to parse for an entry")
            .arg(HVLimits::current().parsedSize);
}

} // namespace HovletsTool
