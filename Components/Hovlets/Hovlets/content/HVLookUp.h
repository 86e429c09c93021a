// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContentTree.h"

#include <QtCore/QString>

#include <functional>

class HVContext;

namespace Hovlets {

class HVIndex;

/// An entry that a look-up found, and the folder of its package.
struct HVFoundContent
{
    HVContentTree tree;
    QString packageRoot; // canonical; a null string if the folder does not exist
};

/// A call of HVIndex::retrieve() with key and locale already bound.
using HVRetrieve = std::function<HVXmlElement *(QString &path, int &depth, HVXmlElement *&root)>;

/*!
 * \brief Asks an index once and takes ownership of the result.
 *
 * An index returns the folder of the control file and the number of levels up to the package. Only
 * this function converts the two into the package folder. Without an entry, the result is empty.
 */
[[nodiscard]] HVFoundContent lookUp(const HVRetrieve &retrieve);

/*!
 * The entry for \a key in the first of the contentLocales() that has one.
 *
 * Reads the locales before it asks the index, whose code may change settings.
 */
HVXmlElement *retrieveByLocale(HVIndex &index, const HVContext &settings, const QString &key,
                               QString &path, int &depth, HVXmlElement *&root);

} // namespace Hovlets
