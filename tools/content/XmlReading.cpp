// SPDX-License-Identifier: Apache-2.0
#include "XmlReading.h"

#include <QtCore/QRegularExpression>

#include <libxml/SAX2.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <memory>

namespace HovletsTool {

namespace {

QString fromXml(const xmlChar *text)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(text));
}

/// The encoding in the XML declaration, or an empty array.
QByteArray declaredEncoding(const QByteArray &bytes)
{
    constexpr int Declaration = 256; // bytes, more than any sensible declaration has
    static const QRegularExpression declaration(
            QStringLiteral("^<\\?xml\\s[^>]*\\bencoding\\s*=\\s*[\"']([-._A-Za-z0-9]+)"));
    const QString head = QString::fromLatin1(bytes.left(Declaration));
    return declaration.match(head).captured(1).toLatin1();
}

} // namespace

bool convertToUtf8(QByteArray &bytes)
{
    constexpr int Chunk = 65536; // bytes, which bounds the memory
    const QByteArray encoding = declaredEncoding(bytes).toUpper();
    // A declaration that can be read as 8-bit characters is not in UTF-16 or UTF-32.
    if (encoding.isEmpty() || encoding.startsWith("UTF") || encoding.contains("UCS"))
        return false;
    const std::unique_ptr<xmlCharEncodingHandler, decltype(&xmlCharEncCloseFunc)> handler(
            xmlFindCharEncodingHandler(encoding.constData()), &xmlCharEncCloseFunc);
    const std::unique_ptr<xmlBuffer, decltype(&xmlBufferFree)> in(xmlBufferCreate(),
                                                                  &xmlBufferFree);
    const std::unique_ptr<xmlBuffer, decltype(&xmlBufferFree)> out(xmlBufferCreate(),
                                                                   &xmlBufferFree);
    if (!handler || !in || !out)
        return false;
    QByteArray converted;
    for (int begin = 0; begin < bytes.size(); begin += Chunk) {
        const int size = std::min(Chunk, static_cast<int>(bytes.size()) - begin);
        xmlBufferAdd(in.get(), reinterpret_cast<const xmlChar *>(bytes.constData()) + begin, size);
        if (xmlCharEncInFunc(handler.get(), out.get(), in.get()) < 0)
            return false; // the parser reports what is wrong
        converted.append(reinterpret_cast<const char *>(xmlBufferContent(out.get())),
                         xmlBufferLength(out.get()));
        xmlBufferEmpty(out.get());
    }
    if (xmlBufferLength(in.get()) > 0) // an incomplete character
        return false;
    bytes = converted;
    return true;
}

XmlReading::XmlReading(const QByteArray &bytes, bool isConverted)
    : m_bytes(bytes)
    , m_isConverted(isConverted)
{
}

XmlReading::~XmlReading() = default;

bool XmlReading::run()
{
    xmlSAXHandler handlers = {};
    handlers.startDocument = &xmlSAX2StartDocument;
    handlers.internalSubset = &xmlSAX2InternalSubset;
    handlers.entityDecl = &xmlSAX2EntityDecl;
    handlers.getEntity = &xmlSAX2GetEntity;
    handlers.startElement = &handleStart;
    handlers.endElement = &handleEnd;
    handlers.characters = &handleText;
    handlers.cdataBlock = &handleText;
    handlers.comment = &handleComment;
    handlers.warning = &ignore;
    handlers.error = &handleError;
    const std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> context(
            xmlCreateMemoryParserCtxt(m_bytes.constData(), static_cast<int>(m_bytes.size())),
            &xmlFreeParserCtxt);
    if (!context) {
        m_error.message = QStringLiteral("the file is empty");
        return false;
    }
    // Lifts the parser's limits on depth and sizes, but not those that guard against entities.
    const int huge = m_bytes.contains("<!ENTITY") ? 0 : XML_PARSE_HUGE;
    xmlCtxtUseOptions(context.get(), (m_isConverted ? XML_PARSE_IGNORE_ENC : 0) | huge);
    xmlSAXHandler *own = context->sax;
    context->sax = &handlers;
    context->_private = this;
    context->replaceEntities = 1; // in the values of attributes
    m_context = context.get();
    xmlParseDocument(context.get());
    context->sax = own;
    xmlFreeDoc(context->myDoc);
    context->myDoc = nullptr;
    m_context = nullptr;
    if (!context->wellFormed && m_error.message.isEmpty())
        m_error.message = QStringLiteral("not well-formed");
    return context->wellFormed != 0;
}

XmlReading &XmlReading::readingOf(void *context)
{
    return *static_cast<XmlReading *>(static_cast<xmlParserCtxt *>(context)->_private);
}

/// The offset up to which the parser has read the file.
int XmlReading::readOffset() const
{
    const xmlParserInput *input = m_context->inputTab[0];
    return static_cast<int>(input->consumed) + static_cast<int>(input->cur - input->base);
}

/// The offset of the last \a sign that the parser has read, or of the reference to an entity.
int XmlReading::startOf(const void *context, const char *sign) const
{
    const auto at = m_bytes.lastIndexOf(isInEntity(context) ? "&" : sign, readOffset() - 1);
    return std::max(0, static_cast<int>(at));
}

void XmlReading::handleStart(void *context, const xmlChar *name, const xmlChar **attributes)
{
    XmlReading &self = readingOf(context);
    XmlDocument::Element element;
    element.name = fromXml(name);
    element.level = self.openElements();
    // The parser has read the attributes, none of which can contain a "<".
    element.offset = self.startOf(context, "<");
    for (; attributes && attributes[0]; attributes += 2)
        element.attributes.push_back({ fromXml(attributes[0]), fromXml(attributes[1]) });
    self.finishText(element.offset, self.readOffset());
    self.m_open.push_back(element.offset);
    self.startElement(std::move(element));
}

void XmlReading::handleEnd(void *context, const xmlChar *)
{
    XmlReading &self = readingOf(context);
    self.finishText(self.readOffset(), self.readOffset());
    self.endElement();
    self.m_open.pop_back();
}

void XmlReading::handleText(void *context, const xmlChar *text, int length)
{
    XmlReading &self = readingOf(context);
    if (self.m_open.empty())
        return;
    self.text(QString::fromUtf8(reinterpret_cast<const char *>(text), length));
    self.m_isInText = true;
}

void XmlReading::handleComment(void *context, const xmlChar *)
{
    XmlReading &self = readingOf(context);
    if (!self.m_open.empty())
        self.finishText(self.startOf(context, "<!--"), self.readOffset());
}

/// Ends a text at \a end. The tag or comment after it ends at \a read.
void XmlReading::finishText(int end, int read)
{
    if (m_isInText && !m_open.empty())
        textRange({ m_read, end });
    m_isInText = false;
    m_read = read;
}

/// Keeps the first error, as it may cause the others.
void XmlReading::handleError(void *context, const char *, ...)
{
    XmlReading &self = readingOf(context);
    if (!self.m_error.message.isEmpty())
        return;
    const xmlError &error = static_cast<xmlParserCtxt *>(context)->lastError;
    self.m_error.message = QString::fromUtf8(error.message).trimmed();
    self.m_error.position = { std::max(1, error.line), std::max(1, error.int2) };
    if (!self.m_open.empty())
        self.m_error.openElement = self.m_open.back();
    // A hostile file can have millions of errors. Errors in entities end the parse by themselves.
    if (self.isInEntity(context))
        self.m_error.entity = self.startOf(context, "&");
    else if (error.level == XML_ERR_FATAL)
        xmlStopParser(self.m_context);
}

void XmlReading::ignore(void *, const char *, ...) { }

} // namespace HovletsTool
