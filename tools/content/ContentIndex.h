// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <HVContext.h>
#include <HVControlFiles.h>
#include <HVIndex.h>
#include <HVManager.h>

#include <QtCore/QFileInfo>
#include <QtCore/QList>
#include <QtCore/QSet>

#include <string>
#include <vector>

namespace HovletsTool {

/*!
 * \brief The content of the given paths as a host sees it.
 *
 * The library itself reads the content, so the tools cannot disagree with it.
 */
class ContentIndex
{
public:
    /*!
     * Throws a ToolError for a path that is not a folder.
     * \param host receives the library's messages and outlives the index; may be null
     */
    explicit ContentIndex(const std::vector<std::string> &paths,
                          const HVContext &context = HVContext(),
                          Hovlets::HVInterface *host = nullptr);

    [[nodiscard]] Hovlets::HVManager &manager() { return m_manager; }

    /// All package folders in the order of the paths, and by name within a path.
    [[nodiscard]] QList<QFileInfo> packages() const { return m_packages; }

    /// The control files that the library serves, in the order in which it searches them.
    [[nodiscard]] QStringList controlFiles() const { return m_index.files; }

    [[nodiscard]] QString packageOf(const QString &file) const
    {
        return m_index.packageNameForLocation(file);
    }

private:
    class Index : public Hovlets::HVIndex
    {
    public:
        using HVIndex::HVIndex;
        void indexControlFile(const QString &file, const QString &location) override;

        QStringList files;
        QSet<QString> known; // the same files
        Hovlets::HVControlFiles places;
    };

    void addPath(const QString &path);
    void addDefaultPackages();

    HVContext m_context;
    Index m_index;
    Hovlets::HVManager m_manager;
    QList<QFileInfo> m_packages;
};

} // namespace HovletsTool
