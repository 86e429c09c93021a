// SPDX-License-Identifier: Apache-2.0
#include "SchemaCheck.h"

#include "Findings.h"
#include "Program.h"

#include <QtCore/QFile>

#include <libxml/parser.h>
#include <libxml/xmlschemas.h>

#include <algorithm>
#include <memory>

namespace {

template <typename T> using Owned = std::unique_ptr<T, void (*)(T *)>;

struct Target
{
    QString path;
    FindingList &findings;
};

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Keys and locales are checked elsewhere, with more knowledge than a schema has.
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
        target.findings.add("HV103", target.path, { std::max(1, error->line), 1 },
                            QString::fromUtf8(error->message).trimmed());
}

} // namespace

void checkSchema(const QString &schema, const QString &path, FindingList &findings)
{
    const QByteArray rules = bytesOf(QStringLiteral(":/schemas/%1.xsd").arg(schema));
    const QByteArray bytes = bytesOf(path);
    const Owned<xmlSchemaParserCtxt> reader(
            xmlSchemaNewMemParserCtxt(rules.constData(), static_cast<int>(rules.size())),
            &xmlSchemaFreeParserCtxt);
    const Owned<xmlSchema> parsed(xmlSchemaParse(reader.get()), &xmlSchemaFree);
    if (!parsed)
        throw ToolError(QStringLiteral("the schema %1.xsd cannot be used; reinstall the program")
                                .arg(schema));
    const Owned<xmlDoc> document(
            xmlReadMemory(bytes.constData(), static_cast<int>(bytes.size()), nullptr, nullptr,
                          XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
            &xmlFreeDoc);
    if (!document)
        return;
    const Owned<xmlSchemaValidCtxt> check(xmlSchemaNewValidCtxt(parsed.get()),
                                          &xmlSchemaFreeValidCtxt);
    Target target { path, findings };
    xmlSchemaSetValidStructuredErrors(check.get(), &add, &target);
    xmlSchemaValidateDoc(check.get(), document.get());
}
