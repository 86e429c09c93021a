// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVComponentFinder.h"
#include "HVContentTree.h"
#include "HVLookUpMemory.h"
#include "HVTranslationChain.h"
#include "HVView.h"
#include "HVViewActivity.h"
#include "HVViewContext.h"
#include "HVViewMessages.h"
#include "HVViewServices.h"

#include <QtCore/QPointer>
#include <QtCore/QString>

namespace Hovlets {

/// The members of a view. Showing and the look have a source each.
class HVView::Private
{
public:
    Private(HVView &view, HVViewServices *services)
        : services(services)
        , messages(services)
        , context(view, messages)
        , translator(services ? services->owner() : nullptr,
                     [this](const QString &message) { messages.warn(message); })
    {
    }

    HVComponentFinder finder() const { return { services, content.entry(), lookUps }; }

    QPointer<HVViewServices> services; // null after the manager is destroyed
    HVViewMessages messages;
    HVViewContext context;
    HVContentTree content;
    HVTranslationChain translator;
    HVLookUpMemory lookUps;
    QString packageRoot;
    bool stayOpen = false;
    bool reserved = false;
    bool isSimple = false; // HVKeySimpleMode at the last show
    bool isExpanded = false;
    bool reservedByQml = false;
    HVViewActivity activity;
};

} // namespace Hovlets
