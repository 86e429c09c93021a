// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <deque>

namespace HovletsTool {

class ControlFile;
class FindingList;

using ControlFiles = std::deque<ControlFile>;

/// Checks a control file by itself; \a packages are those that its "search" may name.
void checkControlFile(const ControlFile &file, const QStringList &packages, FindingList &findings);

/*!
 * Checks the files beside each other, in the order in which the library looks through them: which
 * entries never show, and which the locales lack.
 * \param required locales in which every key is to have an entry
 */
void checkLocales(const ControlFiles &files, const QString &fallback, const QStringList &required,
                  FindingList &findings);

/// Checks the host's file of attributes by key.
void checkKeyData(const QString &path, const ControlFiles &files, FindingList &findings);

} // namespace HovletsTool
