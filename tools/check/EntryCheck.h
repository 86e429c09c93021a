// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QSet>
#include <QtCore/QString>

namespace HovletsTool {

class ControlFile;
class FindingList;

/// Checks one control file. Its attribute "search" may name any of \a packages.
void checkControlFile(const ControlFile &file, const QSet<QString> &packages,
                      FindingList &findings);

} // namespace HovletsTool
