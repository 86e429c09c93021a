// SPDX-License-Identifier: Apache-2.0
#include "SchemaCheck.h"

#include "Findings.h"
#include "ToolError.h"

#include <QtCore/QFile>
#include <QtCore/QHash>

#include <libxml/parser.h>
#include <libxml/xmlschemas.h>

#include <algorithm>
#include <memory>

/// The resources of a static library do not register themselves. The macro does not work inside a
/// namespace.
static void registerSchemas()
{
    Q_INIT_RESOURCE(schemas);
}

namespace HovletsTool {

namespace {

template <typename T> using Owned = std::unique_ptr<T, void (*)(T *)>;

struct Target
{
    QString path;
    const XmlDocument &document;
    FindingList &findings;
    QHash<const xmlNode *, size_t> elements; // the index of each node in the document
};

/// The validator reports no columns, so the place comes from \a target's document.
Position positionOf(const Target &target, const xmlError &error)
{
    const auto *node = static_cast<const xmlNode *>(error.node);
    const bool isAttribute = node && node->type == XML_ATTRIBUTE_NODE;
    const auto found = target.elements.find(isAttribute ? node->parent : node);
    if (found == target.elements.end())
        return { std::max(1, node ? static_cast<int>(xmlGetLineNo(node)) : error.line), 1 };
    const XmlDocument::Element &element = target.document.elements().at(*found);
    if (!isAttribute)
        return target.document.position(element.offset);
    const QString name = QString::fromUtf8(reinterpret_cast<const char *>(node->name));
    return target.document.position(element, name);
}

const xmlNode *nextInDocument(const xmlNode *node)
{
    if (node->type == XML_ELEMENT_NODE && node->children)
        return node->children;
    while (node && !node->next)
        node = node->parent;
    return node ? node->next : nullptr;
}

/// Empty when the two readings differ, as they can when entities contain elements.
QHash<const xmlNode *, size_t> elementsOf(xmlDoc *tree, const XmlDocument &document)
{
    QHash<const xmlNode *, size_t> elements;
    for (const xmlNode *node = xmlDocGetRootElement(tree); node; node = nextInDocument(node)) {
        if (node->type == XML_ELEMENT_NODE)
            elements.insert(node, static_cast<size_t>(elements.size()));
    }
    if (static_cast<size_t>(elements.size()) != document.elements().size())
        elements.clear();
    return elements;
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Keeps the validator from reading other files, as the library does.
xmlParserInput *noOtherFile(const char *, const char *, xmlParserCtxt *)
{
    return nullptr;
}

/// Other checks know more about keys and locales than the schema does.
bool isKnownElsewhere(int code)
{
    return code == XML_SCHEMAV_CVC_COMPLEX_TYPE_4 || code == XML_SCHEMAV_CVC_IDC
            || code == XML_SCHEMAV_CVC_MINLENGTH_VALID || code == XML_SCHEMAV_CVC_PATTERN_VALID
            || code == XML_SCHEMAV_CVC_DATATYPE_VALID_1_2_1;
}

void add(void *data, xmlErrorPtr error)
{
    auto &target = *static_cast<Target *>(data);
    if (!isKnownElsewhere(error->code))
        target.findings.add("HV103", target.path, positionOf(target, *error),
                            QString::fromUtf8(error->message).trimmed());
}

} // namespace

void checkSchema(const QString &schema, const QString &path, const XmlDocument &file,
                 FindingList &findings)
{
    registerSchemas();
    const QByteArray rules = bytesOf(QStringLiteral(":/schemas/%1.xsd").arg(schema));
    const QByteArray &bytes = file.bytes();
    // Lifts the parser's limits on depth and sizes, but not those that guard against entities.
    const int reading = bytes.contains("<!ENTITY") ? XML_PARSE_NOENT : XML_PARSE_HUGE;
    const Owned<xmlSchemaParserCtxt> reader(
            xmlSchemaNewMemParserCtxt(rules.constData(), static_cast<int>(rules.size())),
            &xmlSchemaFreeParserCtxt);
    const Owned<xmlSchema> parsed(xmlSchemaParse(reader.get()), &xmlSchemaFree);
    if (!parsed)
        throw ToolError(
                QStringLiteral("the schema %1.xsd is damaged; reinstall the program").arg(schema));
    xmlSetExternalEntityLoader(&noOtherFile);
    const Owned<xmlDoc> document(
            xmlReadMemory(bytes.constData(), static_cast<int>(bytes.size()), nullptr, nullptr,
                          XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING
                                  | XML_PARSE_BIG_LINES | reading),
            &xmlFreeDoc);
    if (!document)
        return;
    const Owned<xmlSchemaValidCtxt> check(xmlSchemaNewValidCtxt(parsed.get()),
                                          &xmlSchemaFreeValidCtxt);
    Target target { path, file, findings, elementsOf(document.get(), file) };
    xmlSchemaSetValidStructuredErrors(check.get(), &add, &target);
    xmlSchemaValidateDoc(check.get(), document.get());
}

} // namespace HovletsTool
