// SPDX-License-Identifier: Apache-2.0
#include "PreviewContent.h"

#include "Program.h"

#include <algorithm>
#include <iterator>

using namespace Hovlets;

namespace {

QStringList sorted(QStringList names)
{
    names.removeDuplicates();
    names.sort();
    return names;
}

} // namespace

PreviewContent::~PreviewContent()
{
    m_content.reset(); // tells the host, to the end
}

void PreviewContent::load(const std::vector<std::string> &paths, const PopupLook &look)
{
    m_entries.clear();
    m_content.reset();
    m_error.clear();

    HVContext context = contextFor(look);
    context.set(HVKeyPopupIsWindow, true); // a part of this window, not one of its own
    context.set(HVKeyTrackHover, false); // the controls here have no hovlets
    m_host = std::make_unique<PopupHost>(context);
    try {
        m_content = std::make_unique<ContentIndex>(paths, context, m_host.get());
        m_entries = entriesOf(*m_content);
    } catch (const ToolError &error) {
        m_content.reset();
        m_error = QString::fromUtf8(error.what());
    }
}

void PreviewContent::check(const CheckOptions &options)
{
    m_findings.clear();
    try {
        m_findings = checkContent(options).sorted();
    } catch (const ToolError &error) {
        m_error = QString::fromUtf8(error.what());
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
    QStringList packages;
    for (const Entry &entry : m_entries) {
        if (entry.key == key)
            packages += entry.package;
    }
    return sorted(packages);
}

QList<Finding> PreviewContent::findingsOf(const QString &key) const
{
    const auto concerns = [&](const Finding &finding) {
        return std::any_of(m_entries.begin(), m_entries.end(), [&](const Entry &entry) {
            const int line = finding.position.line;
            return entry.key == key && entry.file == finding.file && line >= entry.line
                    && line < entry.endLine;
        });
    };
    QList<Finding> findings;
    std::copy_if(m_findings.begin(), m_findings.end(), std::back_inserter(findings), concerns);
    return findings;
}
