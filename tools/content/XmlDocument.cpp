// SPDX-License-Identifier: Apache-2.0
#include "XmlDocument.h"

#include "StartTag.h"
#include "ToolError.h"

#include <QtCore/QFile>

#include <libxml/parser.h>
#include <libxml/SAX2.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <memory>

namespace HovletsTool {

namespace {

constexpr int MaxLevels = 512; // as in the library

QString fromXml(const xmlChar *text)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(text));
}

QByteArray bytesOf(const QString &file)
{
    QFile device(file);
    if (!device.open(QIODevice::ReadOnly)) {
        throw ToolError(QStringLiteral("cannot read %1: %2; make it readable")
                                .arg(file, device.errorString()));
    }
    return device.readAll();
}

} // namespace

struct XmlHandlers
{
    static void start(void *data, const xmlChar *name, const xmlChar **attributes)
    {
        auto *context = static_cast<xmlParserCtxtPtr>(data);
        auto &document = *static_cast<XmlDocument *>(context->_private);
        XmlDocument::Element element;
        element.name = fromXml(name);
        element.level = static_cast<int>(document.m_open.size());
        // The parser has read the attributes, none of which can contain a "<".
        const auto consumed = static_cast<int>(xmlByteConsumed(context));
        element.offset =
                std::max(0, static_cast<int>(document.m_bytes.lastIndexOf('<', consumed - 1)));
        for (; attributes && attributes[0]; attributes += 2)
            element.attributes.push_back({ fromXml(attributes[0]), fromXml(attributes[1]) });
        endText(document, element.offset, consumed);
        document.m_open.push_back(document.m_elements.size());
        document.m_elements.push_back(std::move(element));
    }

    static void end(void *data, const xmlChar *)
    {
        auto *context = static_cast<xmlParserCtxtPtr>(data);
        auto &document = *static_cast<XmlDocument *>(context->_private);
        const auto consumed = static_cast<int>(xmlByteConsumed(context));
        endText(document, consumed, consumed);
        document.m_open.pop_back();
    }

    static void comment(void *data, const xmlChar *)
    {
        auto *context = static_cast<xmlParserCtxtPtr>(data);
        auto &document = *static_cast<XmlDocument *>(context->_private);
        const auto consumed = static_cast<int>(xmlByteConsumed(context));
        endText(document, static_cast<int>(document.m_bytes.lastIndexOf("<!--", consumed - 1)),
                consumed);
    }

    static void text(void *data, const xmlChar *text, int length)
    {
        auto *context = static_cast<xmlParserCtxtPtr>(data);
        auto &document = *static_cast<XmlDocument *>(context->_private);
        if (document.m_open.empty())
            return;
        XmlDocument::Element &element = document.m_elements[document.m_open.back()];
        element.text += QString::fromUtf8(reinterpret_cast<const char *>(text), length);
        document.m_isInText = true;
    }

    /// Ends a text at \a end. The tag or comment after it ends at \a read.
    static void endText(XmlDocument &document, int end, int read)
    {
        if (document.m_isInText && !document.m_open.empty())
            document.m_elements[document.m_open.back()].textRanges.push_back(
                    { document.m_read, end });
        document.m_isInText = false;
        document.m_read = read;
    }

    /// Keeps the first error, as it may cause the others.
    static void error(void *data, const char *, ...)
    {
        auto *context = static_cast<xmlParserCtxtPtr>(data);
        auto &document = *static_cast<XmlDocument *>(context->_private);
        if (!document.m_error.isEmpty())
            return;
        document.m_error = QString::fromUtf8(context->lastError.message).trimmed();
        // The parser takes the line of a start tag from the tree, which is not built here.
        if (!document.m_open.empty()) {
            const XmlDocument::Element &open = document.m_elements[document.m_open.back()];
            const int line = document.position(open.offset).line;
            document.m_error.replace(QLatin1String(" line 0"),
                                     QStringLiteral(" line %1").arg(line));
        }
        document.m_errorPosition = { std::max(1, context->lastError.line),
                                     std::max(1, context->lastError.int2) };
    }

    static void quiet(void *, const char *, ...) { }
};

bool XmlDocument::Element::has(const QString &attribute) const
{
    return std::any_of(attributes.begin(), attributes.end(),
                       [&](const Attribute &each) { return each.name == attribute; });
}

QString XmlDocument::Element::value(const QString &attribute) const
{
    for (const Attribute &each : attributes) {
        if (each.name == attribute)
            return each.value;
    }
    return {};
}

XmlDocument::XmlDocument(const QString &file)
    : XmlDocument(bytesOf(file))
{
}

XmlDocument::XmlDocument(const QByteArray &bytes)
    : m_bytes(bytes)
{
    m_lines.push_back(0);
    for (auto at = m_bytes.indexOf('\n'); at >= 0; at = m_bytes.indexOf('\n', at + 1))
        m_lines.push_back(static_cast<int>(at) + 1);

    xmlSAXHandler handlers = {};
    // As in the library, entities come only from the file itself.
    handlers.startDocument = &xmlSAX2StartDocument;
    handlers.internalSubset = &xmlSAX2InternalSubset;
    handlers.entityDecl = &xmlSAX2EntityDecl;
    handlers.getEntity = &xmlSAX2GetEntity;
    handlers.startElement = &XmlHandlers::start;
    handlers.endElement = &XmlHandlers::end;
    handlers.characters = &XmlHandlers::text;
    handlers.cdataBlock = &XmlHandlers::text;
    handlers.comment = &XmlHandlers::comment;
    handlers.warning = &XmlHandlers::quiet;
    handlers.error = &XmlHandlers::error;
    const std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> context(
            xmlCreateMemoryParserCtxt(m_bytes.constData(), static_cast<int>(m_bytes.size())),
            &xmlFreeParserCtxt);
    if (!context) {
        m_error = QStringLiteral("the file is empty");
        return;
    }
    // Lifts the parser's limits on depth and sizes, but not those that guard against entities.
    if (!m_bytes.contains("<!ENTITY"))
        xmlCtxtUseOptions(context.get(), XML_PARSE_HUGE);
    xmlSAXHandler *own = context->sax;
    context->sax = &handlers;
    context->_private = this;
    context->replaceEntities = 1; // in the values of attributes
    xmlParseDocument(context.get());
    context->sax = own;
    xmlFreeDoc(context->myDoc);
    context->myDoc = nullptr;
    if (context->wellFormed)
        m_error.clear();
    else if (m_error.isEmpty())
        m_error = QStringLiteral("not well-formed");
}

const XmlDocument::Element *XmlDocument::tooDeep() const
{
    const auto found = std::find_if(m_elements.begin(), m_elements.end(),
                                    [](const Element &each) { return each.level >= MaxLevels; });
    return found == m_elements.end() ? nullptr : &*found;
}

Position XmlDocument::position(int offset) const
{
    const auto next = std::upper_bound(m_lines.begin(), m_lines.end(), offset);
    const int start = *std::prev(next);
    return { static_cast<int>(next - m_lines.begin()),
             static_cast<int>(QString::fromUtf8(m_bytes.mid(start, offset - start)).size()) + 1 };
}

Position XmlDocument::position(const Element &element, const QString &attribute) const
{
    const auto place = findAttribute(m_bytes, element.offset, attribute.toUtf8());
    return position(place ? place->name : element.offset);
}

} // namespace HovletsTool
