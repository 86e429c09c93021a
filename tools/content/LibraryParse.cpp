// SPDX-License-Identifier: Apache-2.0
#include "LibraryParse.h"

#include "XmlDocument.h"

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

} // namespace HovletsTool
