// SPDX-License-Identifier: Apache-2.0
#include "SchemaCheck.h"

#include "Findings.h"
#include "ToolError.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <libxml/xmlschemas.h>

#include <map>

/// The resources of a static library do not register themselves. The macro does not work inside a
/// namespace.
static void registerSchemas()
{
    Q_INIT_RESOURCE(schemas);
}

namespace HovletsTool {

namespace {

template <typename T> using Owned = std::unique_ptr<T, void (*)(T *)>;

const xmlChar *toXml(const QByteArray &text)
{
    return reinterpret_cast<const xmlChar *>(text.constData());
}

/// The schema without its rule on unique keys. Another check gives better messages for it, and its
/// time would grow with the square of their number.
QByteArray rulesOf(const QString &schema)
{
    registerSchemas();
    QFile file(QStringLiteral(":/schemas/%1.xsd").arg(schema));
    QByteArray rules = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const QByteArray end = "</xs:unique>";
    const auto from = rules.indexOf("<xs:unique");
    if (from >= 0)
        rules.remove(from, rules.indexOf(end) + end.size() - from);
    return rules;
}

xmlSchema *schemaNamed(const QString &name)
{
    static std::map<QString, Owned<xmlSchema>> schemas;
    const auto known = schemas.find(name);
    if (known != schemas.end())
        return known->second.get();
    const QByteArray rules = rulesOf(name);
    const Owned<xmlSchemaParserCtxt> parser(
            xmlSchemaNewMemParserCtxt(rules.constData(), static_cast<int>(rules.size())),
            &xmlSchemaFreeParserCtxt);
    Owned<xmlSchema> schema(xmlSchemaParse(parser.get()), &xmlSchemaFree);
    if (!schema)
        throw ToolError(
                QStringLiteral("the schema %1.xsd is damaged; reinstall the program").arg(name));
    return schemas.emplace(name, std::move(schema)).first->second.get();
}

/// Other checks give better messages about keys and locales.
bool isKnownElsewhere(int code)
{
    return code == XML_SCHEMAV_CVC_COMPLEX_TYPE_4 || code == XML_SCHEMAV_CVC_MINLENGTH_VALID
            || code == XML_SCHEMAV_CVC_PATTERN_VALID
            || code == XML_SCHEMAV_CVC_DATATYPE_VALID_1_2_1;
}

/*!
 * A name with or without a prefix. The prefix itself serves as the namespace. It need not be
 * resolved, because the schema has no names with a prefix.
 */
struct Name
{
    Name(const QString &qualified, const QByteArray &defaultNamespace)
    {
        const QByteArray name = qualified.toUtf8();
        const auto colon = name.indexOf(':');
        local = name.mid(colon + 1);
        nameSpace = colon < 0 ? defaultNamespace : name.left(colon);
    }

    [[nodiscard]] const xmlChar *nameSpaceOrNull() const
    {
        return nameSpace.isEmpty() ? nullptr : toXml(nameSpace);
    }

    QByteArray local;
    QByteArray nameSpace;
};

bool declaresNamespace(const XmlDocument::Attribute &attribute)
{
    return attribute.name == QLatin1String("xmlns")
            || attribute.name.startsWith(QLatin1String("xmlns:"));
}

} // namespace

/*!
 * The validator receives the elements of a document that is already parsed: with its own parser, it
 * would keep the whole file in memory as a tree.
 */
class SchemaCheck::Private
{
public:
    Private(const QString &schema, const QString &path, const XmlDocument &document,
            FindingList &findings)
        : m_path(path)
        , m_document(document)
        , m_findings(findings)
        , m_validator(xmlSchemaNewValidCtxt(schemaNamed(schema)), &xmlSchemaFreeValidCtxt)
    {
        xmlSchemaSetValidStructuredErrors(m_validator.get(), &handleError, this);
        m_plug = xmlSchemaSAXPlug(m_validator.get(), &m_handler, &m_data);
    }

    ~Private() { xmlSchemaSAXUnplug(m_plug); }
    Q_DISABLE_COPY_MOVE(Private)

    void start(const XmlDocument::Element &element);
    void text(const QByteArray &text)
    {
        m_handler->characters(m_data, toXml(text), static_cast<int>(text.size()));
    }
    void endTo(int level);

private:
    struct Open
    {
        Name name; // the validator stores pointers into it
        QByteArray defaultNamespace;
        int offset;
    };

    static void handleError(void *data, xmlErrorPtr error);
    [[nodiscard]] Position position(const QString &message) const;

    QString m_path;
    const XmlDocument &m_document;
    FindingList &m_findings;
    Owned<xmlSchemaValidCtxt> m_validator;
    xmlSchemaSAXPlugStruct *m_plug = nullptr;
    xmlSAXHandler *m_handler = nullptr;
    void *m_data = nullptr;
    std::vector<Open> m_open;
    int m_offset = 0; // of the element being validated
};

void SchemaCheck::Private::start(const XmlDocument::Element &element)
{
    endTo(element.level);
    QByteArray defaultNamespace = m_open.empty() ? QByteArray() : m_open.back().defaultNamespace;
    if (element.has(QStringLiteral("xmlns")))
        defaultNamespace = element.value(QStringLiteral("xmlns")).toUtf8();

    std::vector<Name> names;
    std::vector<QByteArray> values;
    for (const XmlDocument::Attribute &attribute : element.attributes) {
        if (declaresNamespace(attribute))
            continue;
        names.emplace_back(attribute.name, QByteArray());
        values.push_back(attribute.value.toUtf8());
    }
    std::vector<const xmlChar *> attributes;
    for (size_t i = 0; i < names.size(); ++i)
        attributes.insert(attributes.end(),
                          { toXml(names[i].local), nullptr, names[i].nameSpaceOrNull(),
                            toXml(values[i]), toXml(values[i]) + values[i].size() });

    m_open.push_back({ Name(element.name, defaultNamespace), defaultNamespace, element.offset });
    m_offset = element.offset;
    const Name &name = m_open.back().name;
    m_handler->startElementNs(m_data, toXml(name.local), nullptr, name.nameSpaceOrNull(), 0,
                              nullptr, static_cast<int>(names.size()), 0, attributes.data());
}

/// Ends the open elements at \a level and below.
void SchemaCheck::Private::endTo(int level)
{
    while (static_cast<int>(m_open.size()) > level) {
        const Name &name = m_open.back().name;
        m_offset = m_open.back().offset;
        m_handler->endElementNs(m_data, toXml(name.local), nullptr, name.nameSpaceOrNull());
        m_open.pop_back();
    }
}

void SchemaCheck::Private::handleError(void *data, xmlErrorPtr error)
{
    auto &self = *static_cast<Private *>(data);
    if (isKnownElsewhere(error->code))
        return;
    const QString message = QString::fromUtf8(error->message).trimmed();
    self.m_findings.add("HV103", self.m_path, self.position(message), message);
}

/// The validator names the attribute only in its message.
Position SchemaCheck::Private::position(const QString &message) const
{
    static const QRegularExpression attribute(
            QStringLiteral("^Element '[^']*', attribute '([^']*)'"));
    const auto match = attribute.match(message);
    XmlDocument::Element element;
    element.offset = m_offset;
    return match.hasMatch() ? m_document.position(element, match.captured(1))
                            : m_document.position(m_offset);
}

SchemaCheck::SchemaCheck(const QString &schema, const QString &path, const XmlDocument &document,
                         FindingList &findings)
    : d(std::make_unique<Private>(schema, path, document, findings))
{
    d->start(*document.root());
    if (document.hasTextInRoot())
        d->text("text");
}

SchemaCheck::~SchemaCheck() = default;

void SchemaCheck::check(const XmlDocument::Branch &branch)
{
    for (const XmlDocument::Element &element : branch.elements) {
        d->start(element);
        const QString text = element.text.trimmed();
        if (!text.isEmpty())
            d->text("text");
    }
}

void SchemaCheck::finish()
{
    d->endTo(0);
}

} // namespace HovletsTool
