// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace Hovlets {

/*!
 * \brief The folders of the packages that an attribute "search" names.
 *
 * Caches the last result, because every text, picture and clip of a popup needs it, and a control
 * file may name thousands of packages.
 */
class HVSearchedPackages
{
public:
    /// The names in \a search, which commas, semicolons or white space separate. A separator at the
    /// start or the end adds an empty name. Names that do not end within the first 16,384
    /// characters are ignored.
    static QStringList names(const QString &search);

    /// The folders of each package in \a packages that \a search names, in the order of the names.
    /// A package counts once.
    QStringList folders(const QString &search, const QMap<QString, QStringList> &packages);

    /// Clears the cache. Call it when the packages change.
    void clear();

private:
    QString m_search; // shares its data with the attribute, which proves that they are equal
    QStringList m_folders;
};

} // namespace Hovlets
