// SPDX-License-Identifier: Apache-2.0
#include "HVSearchedPackages.h"

#include <QtCore/QSet>

#include <algorithm>

namespace Hovlets {

namespace {

/// Whether \a c separates names. Equivalent to the pattern "[,;\s]", but faster.
bool isSeparator(QChar c)
{
    constexpr ushort MongolianVowelSeparator = 0x180e; // a space only in the pattern
    return c == QLatin1Char(',') || c == QLatin1Char(';') || c.isSpace()
            || c.unicode() == MongolianVowelSeparator;
}

/// The start of \a search that is not ignored.
QString usedPart(const QString &search)
{
    constexpr int Most = 16384; // characters

    if (search.size() <= Most)
        return search;
    // Not a part of a name.
    const QChar *const begin = search.cbegin();
    const QChar *end = begin + Most;
    while (end != begin && !isSeparator(*end))
        --end;
    return search.left(static_cast<int>(end - begin));
}

} // namespace

QStringList HVSearchedPackages::names(const QString &search)
{
    const QString used = usedPart(search);
    const QChar *const end = used.cend();
    QStringList names;
    const QChar *at = used.cbegin();
    const QChar *nameEnd = nullptr;
    do {
        nameEnd = std::find_if(at, end, &isSeparator);
        names += QString(at, static_cast<int>(nameEnd - at));
        at = std::find_if_not(nameEnd, end, &isSeparator);
    } while (nameEnd != end);
    return names;
}

QStringList HVSearchedPackages::folders(const QString &search,
                                        const QMap<QString, QStringList> &packages)
{
    if (search.isEmpty())
        return {};
    if (search.constData() == m_search.constData() && search.size() == m_search.size())
        return m_folders;

    QStringList folders;
    QSet<QString> named;
    const QStringList all = names(search);
    for (const QString &name : all) {
        const auto found = packages.constFind(name);
        if (found == packages.cend() || named.contains(name))
            continue;
        named.insert(name);
        folders += found.value();
    }
    m_search = search;
    m_folders = folders;
    return folders;
}

void HVSearchedPackages::clear()
{
    m_search.clear();
    m_folders.clear();
}

} // namespace Hovlets
