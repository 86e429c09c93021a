// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QHash>
#include <QtCore/QPair>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace Hovlets {

class HVIndex;
class HVXmlElement;

/*!
 * \brief Finds the files that content names, in the search folders of its entry.
 *
 * Each folder is searched once, however often the content names it, and the answers are remembered:
 * create a search when you need it, and do not keep it.
 */
class HVComponentSearch
{
public:
    /// Neither is owned; \a entry may be null.
    HVComponentSearch(const HVIndex &index, const HVXmlElement *entry);

    /*!
     * Refuses files outside the search folders, with symbolic links resolved: see
     * HVKeyConfineContent. A path from the host's settings is permitted wherever it leads.
     * \param hostPath the category path if it comes from the settings, else empty
     */
    void confine(const QString &hostPath);

    /*!
     * The first existing file \a relativePath (or \a category, if it is empty) in the folders.
     * Otherwise \a category itself, or an empty string if confined and \a category leads out of the
     * folders.
     */
    QString find(const QString &category, const QString &relativePath);

    /// Whether the folder \a category leads out of the \a packageRoot. It need not exist.
    static bool leadsOut(const QString &category, const QString &packageRoot);

    /// The files that exist but were refused.
    [[nodiscard]] QStringList refused() const { return m_refused; }

private:
    QString search(const QString &category, const QString &relativePath);
    bool admits(const QString &path);

    QHash<QPair<QString, QString>, QString> m_found; // by category and relative path
    QStringList m_folders;
    QStringList m_admitted; // canonical paths
    QStringList m_refused;
    QString m_hostPath; // null unless it leads out of the folders
    bool m_isConfined = false;
};

} // namespace Hovlets
