// SPDX-License-Identifier: Apache-2.0
#include "EntryCheck.h"

#include "ControlFile.h"
#include "Findings.h"
#include "KnownLocale.h"
#include "PlaceholderCheck.h"
#include "SchemaCheck.h"

#include <HVExternalResource.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

namespace HovletsTool {

namespace {

const QLatin1String ReservedAttributes[] = { QLatin1String("HVLocation"),
                                             QLatin1String("HVPackagName") };

void checkRoot(const ControlFile &file, const QStringList &packages, FindingList &findings)
{
    const XmlDocument::Element &root = *file.root();
    const XmlDocument &document = file.document();
    if (!file.isForAllLocales() && !isKnownLocale(file.locale()))
        findings.add("HV204", file.path(), document.position(root, QStringLiteral("locale")),
                     QStringLiteral("unknown locale \"%1\"").arg(file.locale()));
    static const QRegularExpression separator(QStringLiteral("[,;\\s]+"),
                                              QRegularExpression::UseUnicodePropertiesOption);
    const QStringList names = root.value(QStringLiteral("search")).split(separator);
    for (const QString &name : names) {
        if (!name.isEmpty() && !packages.contains(name))
            findings.add("HV206", file.path(), document.position(root, QStringLiteral("search")),
                         QStringLiteral("no package is named \"%1\"").arg(name));
    }
}

void checkKey(const ControlFile &file, const ControlFile::Entry &entry, QSet<QString> &seen,
              FindingList &findings)
{
    if (entry.key.isEmpty())
        return findings.add("HV201", file.path(), file.position(entry),
                            QStringLiteral("no control can ask for this entry"));
    if (seen.contains(entry.key))
        findings.add("HV202", file.path(), file.position(entry),
                     QStringLiteral("\"%1\" is already a key in this file").arg(entry.key));
    seen.insert(entry.key);
}

void checkReservedAttributes(const QString &path, const XmlDocument &document,
                             const XmlDocument::Element &element, FindingList &findings)
{
    for (const QLatin1String &name : ReservedAttributes) {
        if (element.has(name))
            findings.add("HV205", path, document.position(element, name),
                         QStringLiteral("the library sets \"%1\" itself").arg(name));
    }
}

/// Whether the library takes the link for a topic or a path, although it can hardly be one.
bool isMistakenLink(const QString &link)
{
    static const QRegularExpression address(QStringLiteral("^[a-zA-Z][-+.a-zA-Z0-9]*:/"));
    static const QRegularExpression drive(QStringLiteral("^[a-zA-Z]:[/\\\\]"));
    if (link.trimmed().isEmpty() || drive.match(link).hasMatch())
        return true;
    switch (Hovlets::externalResourceType(link)) {
    case Hovlets::HVUrlResource:
        return false;
    case Hovlets::HVFileResource:
        return address.match(link).hasMatch();
    default:
        return link.startsWith(QLatin1String("www.")) || link.contains(QLatin1Char(':'))
                || link.contains(QLatin1Char('\\'));
    }
}

void checkLink(const QString &link, const ControlFile &file, const XmlDocument::Element &element,
               const QString &attribute, FindingList &findings)
{
    if (isMistakenLink(link))
        findings.add("HV402", file.path(), file.document().position(element, attribute),
                     QStringLiteral("\"%1\" is not an address, a path or a topic").arg(link));
}

void checkTexts(const ControlFile &file, const XmlDocument::Element &element, FindingList &findings)
{
    checkPlaceholders(file.path(), file.document(), element, findings);
    const QString href = QStringLiteral("href");
    if (element.name == QLatin1String("link"))
        checkLink(element.value(href), file, element, href, findings);
    static const QRegularExpression anchor(
            QStringLiteral("<a\\s[^<>]*href\\s*=\\s*(?:\"([^\"]*)\"|'([^']*)')"));
    auto links = anchor.globalMatch(element.text);
    while (links.hasNext()) {
        const auto match = links.next();
        checkLink(match.captured(1) + match.captured(2), file, element, QString(), findings);
    }
}

void checkForm(const QString &path, const XmlDocument &document, FindingList &findings)
{
    if (const XmlDocument::Element *element = document.tooDeep())
        findings.add("HV105", path, document.position(element->offset),
                     QStringLiteral("elements nested more than 512 deep are not read, nor is the "
                                    "rest of the file"));
    else if (!document.isWellFormed())
        findings.add("HV101", path, document.errorPosition(), document.error());
}

} // namespace

void checkControlFile(const ControlFile &file, const QStringList &packages, FindingList &findings)
{
    const XmlDocument &document = file.document();
    checkForm(file.path(), document, findings);
    if (!file.root())
        return;
    checkRoot(file, packages, findings);
    checkSchema(QStringLiteral("hovlets"), file.path(), document, findings);
    QSet<QString> seen;
    for (const ControlFile::Entry &entry : file.entries()) {
        checkKey(file, entry, seen, findings);
        checkReservedAttributes(file.path(), document, *entry.element, findings);
        checkTexts(file, *entry.element, findings);
        for (const XmlDocument::Element *element : entry.below)
            checkTexts(file, *element, findings);
    }
}

void checkKeyData(const QString &path, const ControlFiles &files, FindingList &findings)
{
    const XmlDocument document(path);
    findings.addFile(path);
    checkForm(path, document, findings);
    if (!document.isWellFormed())
        return;
    const XmlDocument::Element &root = document.elements().front();
    if (root.name != QLatin1String("hovletkeys"))
        return findings.add("HV104", path, document.position(root.offset),
                            QStringLiteral("the root element is \"%1\"").arg(root.name));
    checkSchema(QStringLiteral("hovletkeys"), path, document, findings);
    QSet<QString> keys;
    for (const ControlFile &file : files) {
        for (const ControlFile::Entry &entry : file.entries())
            keys.insert(entry.key);
    }
    for (const XmlDocument::Element &element : document.elements()) {
        if (element.name != QLatin1String("key"))
            continue;
        checkReservedAttributes(path, document, element, findings);
        const QString key = element.value(QStringLiteral("name"));
        if (key.isEmpty())
            findings.add("HV210", path, document.position(element.offset),
                         QStringLiteral("these attributes belong to no entry"));
        else if (!keys.contains(key))
            findings.add("HV209", path, document.position(element, QStringLiteral("name")),
                         QStringLiteral("no entry has the key \"%1\"").arg(key));
    }
}

} // namespace HovletsTool
