// SPDX-License-Identifier: Apache-2.0
#include "ControlFile.h"

#include <HVLimits.h>
#include <HVSearchedPackages.h>

#include <utility>

namespace HovletsTool {

using namespace Hovlets;

namespace {

constexpr size_t MaxEntries = 200000; // of one file, which keeps the list of a hostile one small

} // namespace

ControlFile::ControlFile(const QString &path, const QString &package, QByteArray bytes)
    : m_package(package)
    , m_size(bytes.size())
    , m_document(std::move(bytes))
    , m_limit(findMetLimit(m_document))
{
    if (!m_limit)
        m_limit = findParseLimit(m_document, m_size, m_sizeAround);
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
    std::vector<int> offsets;
    m_document.forEachBranch([this, &offsets](const Branch &branch) {
        if (!isEntry(branch))
            return;
        m_entries.isWhole = m_entries.entries.size() < MaxEntries;
        if (!m_entries.isWhole)
            return;
        const QString key = branch.top().value(QStringLiteral("key"));
        const Position position = m_document.position(branch.top(), QStringLiteral("key"));
        m_entries.entries.push_back({ key, position, !isTooLarge(branch) });
        offsets.push_back(branch.top().offset);
        ++m_uses[key];
    });
    findLargeEntries(offsets);
    for (size_t i = 0; i < offsets.size(); ++i) {
        EntryList::Entry &entry = m_entries.entries[i];
        entry.isServed = entry.isServed && isServed() && m_uses.value(entry.key) == 1
                && !m_largeEntries.contains(offsets[i]);
    }
}

/// Only a few entries can be so large, so the time remains linear.
void ControlFile::findLargeEntries(const std::vector<int> &offsets)
{
    if (m_sizeAround == 0)
        return;
    for (size_t i = 0; i < offsets.size(); ++i) {
        const qint64 end = i + 1 < offsets.size() ? offsets[i + 1] : m_document.bytes().size();
        const QString &key = m_entries.entries[i].key;
        if (m_sizeAround + end - offsets[i] > HVLimits::current().parsedSize
            && partToParse(m_document, key).state == HVEntryCut::TooLarge)
            m_largeEntries.insert(offsets[i]);
    }
}

bool ControlFile::isTooLargeToParse(const Branch &branch) const
{
    return m_largeEntries.contains(branch.top().offset);
}

bool ControlFile::serves(const Branch &branch) const
{
    return isEntry(branch) && isServed() && !isTooLarge(branch) && !isTooLargeToParse(branch)
            && m_uses.value(branch.top().value(QStringLiteral("key"))) == 1;
}

QStringList searchedPackages(const QString &search)
{
    QStringList names = HVSearchedPackages::names(search);
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
