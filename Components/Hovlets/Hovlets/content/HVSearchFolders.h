// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringList>

namespace Hovlets {

class HVIndex;
class HVXmlElement;

/*!
 * The folders of HVIndex::componentPathsForElement() without duplicates, because a control file may
 * name a package often. Empty if \a element is null.
 */
QStringList searchFolders(const HVIndex &index, const HVXmlElement *element);

} // namespace Hovlets
