// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"
#include "HVHostTypes.h"

#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief What \a resource names: an address when it is a well-formed URL with a scheme, else a file
 * when it contains "/", else a documentation topic.
 *
 * A path with a drive letter, "C:/x", counts as an address.
 */
HVExternalResourceType externalResourceType(const QString &resource);

/// The setting that decides whether resources of \a type may be opened.
contextKey externalResourceGate(HVExternalResourceType type);

} // namespace Hovlets
