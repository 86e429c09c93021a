// SPDX-License-Identifier: Apache-2.0
#include "CharacterCheck.h"

#include "Findings.h"
#include "StartTag.h"

namespace HovletsTool {

namespace {

constexpr bool ReadsAllCharacters = QT_VERSION_MAJOR > 5;

/// The number in a reference such as "&#x1F600;" at \a offset; 0 for other text.
uint codeAt(const QByteArray &bytes, int offset)
{
    constexpr int Longest = 64; // bytes, with leading zeros
    const QByteArray begin = bytes.mid(offset, Longest);
    const auto end = begin.indexOf(';');
    if (!begin.startsWith("&#") || end < 0)
        return 0;
    const bool isHex = begin.mid(2, 1) == "x";
    const int digits = isHex ? 3 : 2;
    return begin.mid(digits, end - digits).toUInt(nullptr, isHex ? 16 : 10);
}

void checkReference(const QString &path, const XmlDocument &document, int offset,
                    FindingList &findings)
{
    constexpr uint LastInOneUnit = 0xffff;
    const uint code = codeAt(document.bytes(), offset);
    if (code <= LastInOneUnit)
        return;
    const auto end = document.bytes().indexOf(';', offset);
    const QByteArray reference = document.bytes().mid(offset, end + 1 - offset);
    findings.add("HV120", path, document.position(offset),
                 QStringLiteral("Qt 5 reads \"%1\" as another character")
                         .arg(QString::fromLatin1(reference)));
}

} // namespace

void checkCharacters(const QString &path, const XmlDocument &document, FindingList &findings)
{
    if (ReadsAllCharacters)
        return;
    const QByteArray &bytes = document.bytes();
    for (int at = 0; at < bytes.size(); ++at) {
        if (bytes.at(at) == '<')
            at = endOfSection(bytes, at).value_or(at);
        else if (bytes.at(at) == '&')
            checkReference(path, document, at, findings);
    }
}

} // namespace HovletsTool
