// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ContentCheck.h"
#include "ContentIndex.h"
#include "Entries.h"
#include "PopupHost.h"
#include "PopupLook.h"

#include <QtCore/QHash>

#include <memory>

namespace HovletsTool {

/*!
 * \brief What the preview shows: the content of the paths, and what is found in it.
 *
 * Read as a whole, and again when a file changes: what a host sees is what it reads at its start.
 */
class PreviewContent
{
public:
    ~PreviewContent();

    /// Reads the entries of the options' paths. What cannot be read leaves nothing, and an error().
    void load(const CheckOptions &options, const PopupLook &look);

    /// Checks what was loaded; slower, as it opens each clip.
    void check(const CheckOptions &options);

    QString error() const { return m_error; }

    /// Null before content is loaded, and when it cannot be.
    Hovlets::HVManager *manager() { return m_content ? &m_content->manager() : nullptr; }

    /// Mistakes in QML and missing files, of the popups that were shown since the loading.
    QStringList complaints() const { return m_host ? m_host->complaints() : QStringList(); }
    void clearComplaints();

    const std::vector<Entry> &entries() const { return m_entries; }

    /// Each once, sorted.
    QStringList keys() const;
    QStringList locales() const;
    QStringList packagesOf(const QString &key) const;

    const QList<Finding> &findings() const { return m_findings; }
    QList<Finding> findingsOf(const QString &key) const { return m_findingsByKey.value(key); }

private:
    std::unique_ptr<PopupHost> m_host;
    std::unique_ptr<ContentIndex> m_content;
    std::vector<Entry> m_entries;
    QList<Finding> m_findings;
    QHash<QString, QList<Finding>> m_findingsByKey;
    QString m_error;
};

} // namespace HovletsTool
