// SPDX-License-Identifier: Apache-2.0
#include "XmlCheck.h"

#include "Findings.h"

#include <HVLimits.h>

namespace HovletsTool {

void checkForm(const QString &path, const XmlDocument &document, FindingList &findings)
{
    if (document.tooDeep())
        return findings.add("HV105", path, *document.tooDeep(),
                            QStringLiteral("elements nested more than %1 deep are not read, nor is "
                                           "the rest of the file")
                                    .arg(Hovlets::HVLimits::current().nestingDepth));
    switch (document.problem()) {
    case XmlDocument::Problem::None:
        break;
    case XmlDocument::Problem::Malformed:
        return findings.add("HV101", path, document.errorPosition(), document.error());
    case XmlDocument::Problem::TooLarge:
        return findings.add("HV119", path, document.errorPosition(), document.error());
    }
}

void checkReservedAttributes(const QString &path, const XmlDocument &document,
                             const XmlDocument::Element &element, FindingList &findings)
{
    for (const QLatin1String &name :
         { QLatin1String("HVLocation"), QLatin1String("HVPackagName") }) {
        if (element.has(name))
            findings.add("HV205", path, document.position(element, name),
                         QStringLiteral("the library sets \"%1\" itself").arg(name));
    }
}

} // namespace HovletsTool
