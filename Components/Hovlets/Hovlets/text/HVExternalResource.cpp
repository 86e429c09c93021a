// SPDX-License-Identifier: Apache-2.0
#include "HVExternalResource.h"

#include <QtCore/QUrl>

namespace Hovlets {

HVExternalResourceType externalResourceType(const QString &resource)
{
    const QUrl url(resource, QUrl::StrictMode);
    if (url.isValid() && !url.scheme().isEmpty())
        return HVUrlResource;
    return resource.contains(QLatin1Char('/')) ? HVFileResource : HVDocumentationResource;
}

contextKey externalResourceGate(HVExternalResourceType type)
{
    return type == HVDocumentationResource ? HVKeyDocumentationEnabled : HVKeyLinksEnabled;
}

} // namespace Hovlets
