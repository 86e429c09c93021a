// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"
#include "HVHostTypes.h"

#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief The type of \a resource: an address if it is a well-formed URL with a scheme, else a file
 * if it contains "/", else a documentation topic.
 *
 * A path with a drive letter, "C:/x", counts as an address.
 */
HVExternalResourceType externalResourceType(const QString &resource);

/// The setting that permits opening resources of \a type.
contextKey externalResourceGate(HVExternalResourceType type);

} // namespace Hovlets
