// SPDX-License-Identifier: Apache-2.0
#include "ParserPeers.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QXmlStreamReader>

#include <expat.h>
#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <pugixml.hpp>

#include <memory>

namespace {

/// The state that the callbacks of the event parsers share.
struct Search
{
    const std::string &key;
    void *parser = nullptr;
    bool found = false;

    /// \a attributes are name, value, name, value, …, null, or null when there are none.
    template <typename Char> bool matches(const Char *name, const Char **attributes)
    {
        if (std::string_view(reinterpret_cast<const char *>(name)) != "hovlet")
            return false;
        std::string_view value;
        for (; attributes && attributes[0]; attributes += 2) {
            if (std::string_view(reinterpret_cast<const char *>(attributes[0])) == "key")
                value = reinterpret_cast<const char *>(attributes[1]);
        }
        found = found || value == key;
        return found;
    }
};

} // namespace

bool findWithPugixml(std::string_view text, const std::string &key)
{
    pugi::xml_document document;
    document.load_buffer_inplace(const_cast<char *>(text.data()), text.size());
    for (const pugi::xml_node entry : document.child("hovlets").children("hovlet")) {
        if (key == entry.attribute("key").value())
            return true;
    }
    return false;
}

bool findWithLibxml2(std::string_view text, const std::string &key)
{
    Search search { key };
    xmlSAXHandler handler = {};
    handler.startElement = [](void *data, const xmlChar *name, const xmlChar **attributes) {
        auto *search = static_cast<Search *>(data);
        if (search->matches(name, attributes))
            xmlStopParser(static_cast<xmlParserCtxtPtr>(search->parser));
    };
    xmlParserCtxtPtr parser = xmlCreatePushParserCtxt(&handler, &search, nullptr, 0, nullptr);
    search.parser = parser;
    xmlParseChunk(parser, text.data(), static_cast<int>(text.size()), 1);
    xmlFreeParserCtxt(parser);
    return search.found;
}

bool findWithExpat(std::string_view text, const std::string &key)
{
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
            XML_ParserCreate(nullptr), &XML_ParserFree);
    Search search { key, parser.get() };
    XML_SetUserData(parser.get(), &search);
    XML_SetStartElementHandler(
            parser.get(), [](void *data, const XML_Char *name, const XML_Char **attributes) {
                auto *search = static_cast<Search *>(data);
                if (search->matches(name, attributes))
                    XML_StopParser(static_cast<XML_Parser>(search->parser), XML_FALSE);
            });
    XML_Parse(parser.get(), text.data(), static_cast<int>(text.size()), XML_TRUE);
    return search.found;
}

bool findWithQXmlStreamReader(std::string_view text, const std::string &key)
{
    const QString wanted = QString::fromStdString(key);
    QXmlStreamReader reader(QByteArray::fromRawData(text.data(), static_cast<int>(text.size())));
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement
            && reader.name() == QLatin1String("hovlet")
            && reader.attributes().value(QLatin1String("key")) == wanted)
            return true;
    }
    return false;
}
