// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

class QFileInfo;

namespace Hovlets {

class HVManager;

/*!
 * \brief Walks data paths and packages, and hands each control file that it finds to the manager.
 *
 * Files come by name, and the last one handed over wins a key. GUI thread only; a walk returns when
 * every file has been handed over.
 */
class HVContentLoader
{
public:
    explicit HVContentLoader(HVManager &manager);

    /// Walks the packages in \a paths. Paths that are not folders are skipped silently.
    void loadDataPaths(const QStringList &paths);

    /// Hands over the control files of one package; those in sub-folders are left out.
    void loadPackage(const QFileInfo &package) const;

private:
    void inform(const QString &message) const;

    HVManager &m_manager;
    QStringList m_loadedDirectories; // canonical, most recent first
};

} // namespace Hovlets
