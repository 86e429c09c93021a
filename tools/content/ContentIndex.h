// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <HVContext.h>
#include <HVControlFiles.h>
#include <HVIndex.h>
#include <HVManager.h>

#include <QtCore/QFileInfo>
#include <QtCore/QList>

#include <string>
#include <vector>

namespace HovletsTool {

/*!
 * \brief The content of the given paths as a host would see it: read by the library itself, which
 * therefore cannot disagree with what is told about it here.
 */
class ContentIndex
{
public:
    /// Throws a ToolError for a path that is no folder.
    /// \a host is told what the library has to say, and outlives the index.
    explicit ContentIndex(const std::vector<std::string> &paths,
                          const HVContext &context = HVContext(),
                          Hovlets::HVInterface *host = nullptr);

    Hovlets::HVManager &manager() { return m_manager; }

    /// All package folders, in the order of the paths, those of a path by name.
    QList<QFileInfo> packages() const { return m_packages; }

    /// Those that the library serves, in the order in which it looks through them.
    QStringList controlFiles() const { return m_index.files; }

    QString packageOf(const QString &file) const { return m_index.packageNameForLocation(file); }

private:
    class Index : public Hovlets::HVIndex
    {
    public:
        using HVIndex::HVIndex;
        void indexControlFile(const QString &file, const QString &location) override;

        QStringList files;
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
