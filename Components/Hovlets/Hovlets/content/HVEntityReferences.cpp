// SPDX-License-Identifier: Apache-2.0
#include "HVEntityReferences.h"

#include <algorithm>

namespace Hovlets {

namespace {

/// Those that XML declares itself keep their meaning.
bool isStanding(QStringView name)
{
    return name == QLatin1String("amp") || name == QLatin1String("lt")
            || name == QLatin1String("gt") || name == QLatin1String("quot")
            || name == QLatin1String("apos");
}

/// Whether a character reference, without its "#", stands for a sign that begins a reference.
bool spellsASign(QStringView number)
{
    const bool isHex = number.startsWith(QLatin1Char('x'));
    const uint code = (isHex ? number.mid(1) : number).toString().toUInt(nullptr, isHex ? 16 : 10);
    return code == '&' || code == '%';
}

/// What stands between the sign of a reference and its ";"; empty where no reference is.
QStringView referenceName(QStringView text)
{
    const auto end = std::find_if(text.begin(), text.end(), [](QChar c) {
        return c.isSpace() || QStringView(u";&%<>\"'").contains(c);
    });
    if (end == text.end() || *end != QLatin1Char(';'))
        return {};
    return text.left(end - text.begin());
}

} // namespace

HVEntityReferences::HVEntityReferences(const QString &document)
{
    const auto type = document.indexOf(QLatin1String("<!DOCTYPE"));
    if (type < 0 || document.indexOf(QLatin1String("<!ENTITY"), type) < 0)
        return;
    const QStringView text(document);
    for (qsizetype i = type; i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char('&') || text.at(i) == QLatin1Char('%'))
            addReference(text.mid(i));
    }
}

/// Counts the reference that begins \a text, if it is one.
void HVEntityReferences::addReference(QStringView text)
{
    const QStringView name = referenceName(text.mid(1));
    if (name.isEmpty() || isStanding(name))
        return;
    if (name.startsWith(QLatin1Char('#'))) {
        const int spelled = spellsASign(name.mid(1)) ? 1 : 0;
        m_spelled += spelled;
        m_count += spelled;
        return;
    }
    ++m_count;
    ++m_counts[name.toString()];
}

qint64 HVEntityReferences::countTo(const QString &name) const
{
    const bool isForDeclarations = name.startsWith(QLatin1Char('%'));
    return m_counts.value(isForDeclarations ? name.mid(1) : name) + m_spelled;
}

} // namespace Hovlets
