// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace Hovlets {

/// One row of the table of settings. The texts appear in docs/settings.md, in Markdown.
struct HVSetting
{
    contextKey key;
    QString name; ///< name of the enumerator
    QString type; ///< type that the value is converted to, and its unit or meaning
    QVariant defaultValue; ///< invalid if there is none
    QString defaultNote; ///< meaning of the default where the value does not explain itself
    QString read; ///< when the library reads it
    QString meaning;
};

/// All settings that the library reads, ordered by key.
const QList<HVSetting> &allSettings();

/*!
 * The default of a setting; invalid if it has none or is unknown.
 *
 * HVKeyDocumentationEnabled, HVKeyFallbackLocale and HVKeyLocale are read in two places with
 * different defaults. The second default is in the code that reads it.
 */
QVariant defaultOf(HVContextKey key);

/// The settings that useRecommendedSettings() writes, by key. docs/settings.md has the same list.
const QMap<HVContextKey, QVariant> &recommendedSettings();

} // namespace Hovlets
