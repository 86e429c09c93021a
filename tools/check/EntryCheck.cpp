// SPDX-License-Identifier: Apache-2.0
#include "EntryCheck.h"

#include "CharacterCheck.h"
#include "ControlFile.h"
#include "Findings.h"
#include "KnownLocale.h"
#include "LinkCheck.h"
#include "PlaceholderCheck.h"
#include "SchemaCheck.h"
#include "SizeCheck.h"
#include "XmlCheck.h"

namespace HovletsTool {

namespace {

void checkRoot(const ControlFile &file, const QSet<QString> &packages, FindingList &findings)
{
    const XmlDocument::Element &root = *file.root();
    const XmlDocument &document = file.document();
    if (!file.locale().isEmpty() && !isKnownLocale(file.locale()))
        findings.add("HV204", file.path(), document.position(root, QStringLiteral("locale")),
                     QStringLiteral("unknown locale \"%1\"").arg(file.locale()));
    const Position position = document.position(root, QStringLiteral("search"));
    const QStringList names = searchedPackages(root.value(QStringLiteral("search")));
    for (const QString &name : names) {
        if (!packages.contains(name))
            findings.add("HV206", file.path(), position,
                         QStringLiteral("no package is named \"%1\"").arg(name));
    }
}

void checkKey(const ControlFile &file, const XmlDocument::Element &entry, QSet<QString> &seen,
              FindingList &findings)
{
    const QString key = entry.value(QStringLiteral("key"));
    const auto add = [&](const char *code, const QString &message) {
        findings.add(code, file.path(), file.document().position(entry, QStringLiteral("key")),
                     message);
    };
    if (key.isEmpty())
        return add("HV201", QStringLiteral("no control can ask for this entry"));
    if (seen.contains(key))
        add("HV202", QStringLiteral("\"%1\" is already a key in this file").arg(key));
    seen.insert(key);
}

void checkEntries(const ControlFile &file, FindingList &findings)
{
    const XmlDocument &document = file.document();
    std::optional<SchemaCheck> schema;
    if (document.isWellFormed())
        schema.emplace(QStringLiteral("hovlets"), file.path(), document, findings);
    QSet<QString> seen;
    document.forEachBranch([&](const XmlDocument::Branch &branch) {
        if (schema)
            schema->check(branch);
        if (!isEntry(branch))
            return;
        checkKey(file, branch.top(), seen, findings);
        checkReservedAttributes(file.path(), document, branch.top(), findings);
        checkSize(file, branch, findings);
        for (const XmlDocument::Element &element : branch.elements) {
            checkPlaceholders(file.path(), document, element, findings);
            checkLinks(file.path(), document, element, findings);
        }
    });
    if (schema)
        schema->finish();
}

} // namespace

void checkControlFile(const ControlFile &file, const QSet<QString> &packages, FindingList &findings)
{
    if (file.limit())
        findings.add("HV119", file.path(), file.limit()->position, file.limit()->text);
    else
        checkForm(file.path(), file.document(), findings);
    if (!file.entries().isWhole)
        findings.add("HV119", file.path(),
                     QStringLiteral("only the first %1 entries are checked")
                             .arg(file.entries().entries.size()));
    if (!file.root())
        return;
    checkCharacters(file.path(), file.document(), findings);
    checkRoot(file, packages, findings);
    checkEntries(file, findings);
}

} // namespace HovletsTool
