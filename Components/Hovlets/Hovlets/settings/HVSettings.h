// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace Hovlets {

/// One row of the table of settings. Its texts are those of docs/settings.md, in Markdown.
struct HVSetting
{
    contextKey key;
    QString name; ///< of the enumerator
    QString type; ///< what the value is converted to, and its unit or meaning
    QVariant defaultValue; ///< invalid if there is none
    QString defaultNote; ///< what the default means, where the value alone does not say it
    QString read; ///< when the library reads it
    QString meaning;
};

/// All settings that the library reads, ordered by key.
const QList<HVSetting> &allSettings();

/*!
 * The default of a setting; invalid if it has none, or is unknown.
 *
 * HVKeyDocumentationEnabled, HVKeyFallbackLocale and HVKeyLocale are read in two places with
 * different defaults: the second one is written where it is used.
 */
QVariant defaultOf(HVContextKey key);

} // namespace Hovlets
