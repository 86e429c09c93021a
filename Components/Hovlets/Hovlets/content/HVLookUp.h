// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContentTree.h"

#include <QtCore/QString>

#include <functional>

class HVContext;

namespace Hovlets {

class HVIndex;

/// An entry that a look-up found, and the package folder that it belongs to.
struct HVFoundContent
{
    HVContentTree tree;
    QString packageRoot; // canonical; a null string when the folder does not exist
};

/// How an index is asked: as HVIndex::retrieve(), with key and locale already chosen.
using HVRetrieve = std::function<HVXmlElement *(QString &path, int &depth, HVXmlElement *&root)>;

/*!
 * \brief Asks an index once and takes over what it returns.
 *
 * An index answers with the folder of the control file and the number of levels up to the package.
 * This is the only place that turns the two into the package folder. Without an entry the result
 * is empty.
 */
[[nodiscard]] HVFoundContent lookUp(const HVRetrieve &retrieve);

/*!
 * The entry for \a key in the preferred locale, else in the fallback locale.
 *
 * Both locales are read before the index is asked: its code may change settings.
 */
HVXmlElement *retrieveByLocale(HVIndex &index, const HVContext &settings, const QString &key,
                               QString &path, int &depth, HVXmlElement *&root);

} // namespace Hovlets
