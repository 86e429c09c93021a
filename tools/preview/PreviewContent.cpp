// SPDX-License-Identifier: Apache-2.0
#include "PreviewContent.h"

#include "ToolError.h"

#include <utility>

namespace HovletsTool {

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

void PreviewContent::load(const CheckOptions &options, const PopupLook &look)
{
    m_entries.clear();
    m_content.reset();
    m_error.clear();

    PopupLook asHost = look;
    asHost.keyData = options.keyData;
    asHost.extraPath = options.extraPath;
    try {
        HVContext context = contextFor(asHost);
        context.set(HVKeyPopupIsWindow, true); // a part of this window, not one of its own
        context.set(HVKeyTrackHover, false); // the controls here have no hovlets
        m_host = std::make_unique<PopupHost>(context);
        m_content = std::make_unique<ContentIndex>(options.paths, context, m_host.get());
        m_entries = entriesOf(*m_content);
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
    for (const Finding &finding : std::as_const(m_findings)) {
        for (const Entry &entry : m_entries) {
            const int line = finding.position.line;
            if (entry.file == finding.file && line >= entry.line && line < entry.endLine)
                m_findingsByKey[entry.key] += finding;
        }
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

} // namespace HovletsTool
