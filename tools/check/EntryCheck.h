// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <deque>

namespace HovletsTool {

class ControlFile;
class FindingList;

using ControlFiles = std::deque<ControlFile>;

/// Checks one control file by itself. Its attribute "search" may name any of \a packages.
void checkControlFile(const ControlFile &file, const QStringList &packages, FindingList &findings);

/*!
 * Finds entries that are never shown and locales that lack entries.
 * \param files in the order in which the library searches them
 * \param required locales that need an entry for every key
 */
void checkLocales(const ControlFiles &files, const QString &fallback, const QStringList &required,
                  FindingList &findings);

/// Checks the host's key-data file.
void checkKeyData(const QString &path, const ControlFiles &files, FindingList &findings);

} // namespace HovletsTool
