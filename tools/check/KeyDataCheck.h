// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QSet>
#include <QtCore/QString>

namespace HovletsTool {

class FindingList;

/// Checks the host's key-data file. \a keys are those of all entries.
void checkKeyData(const QString &path, const QSet<QString> &keys, FindingList &findings);

} // namespace HovletsTool
