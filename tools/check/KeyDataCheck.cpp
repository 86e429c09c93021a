// SPDX-License-Identifier: Apache-2.0
#include "KeyDataCheck.h"

#include "Findings.h"
#include "ReadFile.h"
#include "SchemaCheck.h"
#include "XmlCheck.h"

#include <algorithm>

namespace HovletsTool {

void checkKeyData(const QString &path, const QSet<QString> &keys, FindingList &findings)
{
    const XmlDocument document(readContentFile(path));
    findings.addFile(path);
    checkForm(path, document, findings);
    if (!document.isWellFormed())
        return;
    const XmlDocument::Element &root = *document.root();
    if (root.name != QLatin1String("hovletkeys"))
        return findings.add("HV104", path, document.position(root.offset),
                            QStringLiteral("the root element is \"%1\"").arg(root.name));
    SchemaCheck schema(QStringLiteral("hovletkeys"), path, document, findings);
    const auto check = [&](const XmlDocument::Element &element) {
        if (element.name != QLatin1String("key"))
            return;
        checkReservedAttributes(path, document, element, findings);
        const QString name = QStringLiteral("name");
        const QString key = element.value(name);
        if (key.isEmpty())
            findings.add("HV210", path, document.position(element.offset),
                         QStringLiteral("these attributes belong to no entry"));
        else if (!keys.contains(key))
            findings.add("HV209", path, document.position(element, name),
                         QStringLiteral("no entry has the key \"%1\"").arg(key));
    };
    document.forEachBranch([&](const XmlDocument::Branch &branch) {
        schema.check(branch);
        std::for_each(branch.elements.begin(), branch.elements.end(), check);
    });
    schema.finish();
}

} // namespace HovletsTool
