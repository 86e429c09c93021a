// SPDX-License-Identifier: Apache-2.0
#include "PreviewContent.h"

#include "ToolError.h"

#include <algorithm>
#include <utility>

namespace HovletsTool {

using namespace Hovlets;

namespace {

/// The entry that holds the line, or null. \a entries are sorted by line and do not overlap.
const Entry *entryAt(const std::vector<const Entry *> &entries, int line)
{
    const auto next =
            std::upper_bound(entries.begin(), entries.end(), line,
                             [](int left, const Entry *entry) { return left < entry->line; });
    if (next == entries.begin())
        return nullptr;
    const Entry *entry = *std::prev(next);
    return line < entry->endLine ? entry : nullptr;
}

QStringList sorted(QStringList names)
{
    names.removeDuplicates();
    names.sort();
    return names;
}

} // namespace

PreviewContent::~PreviewContent()
{
    m_content.reset(); // it sends messages to the host until the end
}

void PreviewContent::load(const CheckOptions &options, const PopupLook &look)
{
    m_entries.clear();
    m_packagesByKey.clear();
    m_content.reset();
    m_error.clear();

    PopupLook asHost = look;
    asHost.keyData = options.keyData;
    asHost.extraPath = options.extraPath;
    try {
        HVContext context = contextFor(asHost);
        context.set(HVKeyPopupIsWindow, true); // embeds the popup in this window
        context.set(HVKeyTrackHover, false); // the controls here have no hovlets
        m_host = std::make_unique<PopupHost>(context);
        m_content = std::make_unique<ContentIndex>(options.paths, context, m_host.get());
        m_host->setManager(m_content->manager());
        m_entries = entriesOf(*m_content);
        for (const Entry &entry : m_entries)
            m_packagesByKey[entry.key] += entry.package;
    } catch (const ToolError &error) {
        m_content.reset();
        m_error = error.message();
    }
}

void PreviewContent::check(const CheckOptions &options)
{
    m_findings.clear();
    m_findingsByKey.clear();
    try {
        m_findings = checkContent(options).sorted();
    } catch (const ToolError &error) {
        m_error = error.message();
    }
    QHash<QString, std::vector<const Entry *>> byFile; // sorted by line, as m_entries are
    for (const Entry &entry : m_entries)
        byFile[entry.file].push_back(&entry);
    for (const Finding &finding : std::as_const(m_findings)) {
        const auto file = byFile.constFind(finding.file);
        const Entry *entry =
                file == byFile.cend() ? nullptr : entryAt(*file, finding.position.line);
        if (entry)
            m_findingsByKey[entry->key] += finding;
    }
}

void PreviewContent::clearComplaints()
{
    if (m_host)
        m_host->clearComplaints();
}

QStringList PreviewContent::keys() const
{
    QStringList keys;
    for (const Entry &entry : m_entries)
        keys += entry.key;
    return sorted(keys);
}

QStringList PreviewContent::locales() const
{
    QStringList locales;
    for (const Entry &entry : m_entries) {
        if (!entry.locale.isEmpty())
            locales += entry.locale;
    }
    return sorted(locales);
}

QStringList PreviewContent::packagesOf(const QString &key) const
{
    return sorted(m_packagesByKey.value(key));
}

} // namespace HovletsTool
