// SPDX-License-Identifier: Apache-2.0
#include "ControlFile.h"

#include <HVLimits.h>

#include <QtCore/QRegularExpression>

#include <utility>

namespace HovletsTool {

namespace {

constexpr size_t MaxEntries = 200000; // of one file, which keeps the list of a hostile one small

} // namespace

ControlFile::ControlFile(const QString &path, const QString &package, QByteArray bytes)
    : m_package(package)
    , m_document(std::move(bytes))
    , m_limit(findMetLimit(m_document))
{
    m_entries.path = path;
    if (root())
        m_entries.locale = root()->value(QStringLiteral("locale"));
    listEntries();
}

bool ControlFile::isServed() const
{
    return m_document.isWellFormed() && !m_document.tooDeep() && !m_limit;
}

void ControlFile::listEntries()
{
    m_document.forEachBranch([this](const Branch &branch) {
        if (!isEntry(branch))
            return;
        m_entries.isWhole = m_entries.entries.size() < MaxEntries;
        if (!m_entries.isWhole)
            return;
        const QString key = branch.top().value(QStringLiteral("key"));
        const Position position = m_document.position(branch.top(), QStringLiteral("key"));
        m_entries.entries.push_back({ key, position, !isTooLarge(branch) });
        ++m_uses[key];
    });
    for (EntryList::Entry &entry : m_entries.entries)
        entry.isServed = entry.isServed && isServed() && m_uses.value(entry.key) == 1;
}

bool ControlFile::serves(const Branch &branch) const
{
    return isEntry(branch) && isServed() && !isTooLarge(branch)
            && m_uses.value(branch.top().value(QStringLiteral("key"))) == 1;
}

QStringList searchedPackages(const QString &search)
{
    static const QRegularExpression separator(QStringLiteral("[,;\\s]+"),
                                              QRegularExpression::UseUnicodePropertiesOption);
    QStringList names = search.split(separator);
    names.removeAll(QString());
    return names;
}

bool isEntry(const XmlDocument::Branch &branch)
{
    return branch.top().name == QLatin1String("hovlet");
}

bool isTooLarge(const XmlDocument::Branch &entry)
{
    constexpr int Root = 1; // is built as well
    return entry.size + Root > Hovlets::HVLimits::current().builtElements;
}

} // namespace HovletsTool
