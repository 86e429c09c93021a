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
 * \brief The content of the paths and the findings in it.
 *
 * The preview loads everything again when a file changes, and so shows what a host that starts then
 * would see.
 */
class PreviewContent
{
public:
    PreviewContent() = default;
    ~PreviewContent();
    Q_DISABLE_COPY_MOVE(PreviewContent)

    /// Reads the entries in the options' paths. When a path cannot be read, there are no entries,
    /// and error() says why.
    void load(const CheckOptions &options, const PopupLook &look);

    /// Checks the loaded content. Slower than load(), as it opens every clip.
    void check(const CheckOptions &options);

    [[nodiscard]] QString error() const { return m_error; }

    /// Null before load(), and when the content cannot be read.
    [[nodiscard]] Hovlets::HVManager *manager()
    {
        return m_content ? &m_content->manager() : nullptr;
    }

    /// Mistakes in QML and missing files in the popups shown since load() or clearComplaints().
    [[nodiscard]] QStringList complaints() const
    {
        return m_host ? m_host->complaints() : QStringList();
    }
    void clearComplaints();

    [[nodiscard]] const std::vector<Entry> &entries() const { return m_entries; }

    // Each is sorted and without duplicates.
    [[nodiscard]] QStringList keys() const;
    [[nodiscard]] QStringList locales() const;
    [[nodiscard]] QStringList packagesOf(const QString &key) const;

    [[nodiscard]] const QList<Finding> &findings() const { return m_findings; }
    [[nodiscard]] QList<Finding> findingsOf(const QString &key) const
    {
        return m_findingsByKey.value(key);
    }

private:
    std::unique_ptr<PopupHost> m_host;
    std::unique_ptr<ContentIndex> m_content;
    std::vector<Entry> m_entries;
    QHash<QString, QStringList> m_packagesByKey;
    QList<Finding> m_findings;
    QHash<QString, QList<Finding>> m_findingsByKey;
    QString m_error;
};

} // namespace HovletsTool
