// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

namespace HovletsTool {

class FindingList;
struct EntryList;

/*!
 * Finds entries that are never shown and locales that lack entries.
 * \param files in the order in which the library searches them
 * \param required locales that need an entry for every key
 */
void checkLocales(const std::vector<EntryList> &files, const QString &fallback,
                  const QStringList &required, FindingList &findings);

} // namespace HovletsTool
