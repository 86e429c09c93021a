// SPDX-License-Identifier: Apache-2.0
#include "LinkCheck.h"

#include "Findings.h"

#include <HVExternalResource.h>

#include <QtCore/QRegularExpression>

namespace HovletsTool {

namespace {

/// Whether the library reads the link as a topic or a path, although the author hardly means one.
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

} // namespace

void checkLinks(const QString &path, const XmlDocument &document,
                const XmlDocument::Element &element, FindingList &findings)
{
    const auto check = [&](const QString &link, const QString &attribute) {
        if (isMistakenLink(link))
            findings.add("HV402", path, document.position(element, attribute),
                         QStringLiteral("\"%1\" is not an address, a path or a topic").arg(link));
    };
    const QString href = QStringLiteral("href");
    if (element.name == QLatin1String("link") || element.name == QLatin1String("button"))
        check(element.value(href), href);
    static const QRegularExpression anchor(
            QStringLiteral("<a\\s[^<>]*href\\s*=\\s*(?:\"([^\"]*)\"|'([^']*)')"));
    auto links = anchor.globalMatch(element.text);
    while (links.hasNext()) {
        const auto match = links.next();
        check(match.captured(1) + match.captured(2), QString());
    }
}

} // namespace HovletsTool
