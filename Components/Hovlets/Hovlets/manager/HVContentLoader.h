// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

class QFileInfo;

namespace Hovlets {

class HVManager;

/*!
 * \brief Walks data paths and packages, and passes each control file that it finds to the manager.
 *
 * Files come in the order of their names; for a key, the last one takes precedence. GUI thread
 * only. A call returns when all files have been passed on.
 */
class HVContentLoader
{
public:
    explicit HVContentLoader(HVManager &manager);

    /// Walks the packages in \a paths. Silently skips paths that are not folders.
    void loadDataPaths(const QStringList &paths);

    /// Passes on the control files of one package, but not those in subfolders.
    void loadPackage(const QFileInfo &package) const;

private:
    void inform(const QString &message) const;

    HVManager &m_manager;
    QStringList m_loadedDirectories; // canonical, most recent first
};

} // namespace Hovlets
