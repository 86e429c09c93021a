// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QLocale>
#include <QtCore/QStringList>
#include <QtCore/QVector>

class HVContext;

// The locales that the settings name. Content is looked up in the preferred locale, then in the
// fallback locale; both default to "en_US". For translations only one locale is searched, by
// default the system's. HVKeyLanguageFallback adds locales to both searches.

namespace Hovlets {

/// The value of HVKeyLocale.
QLocale preferredContentLocale(const HVContext &context);

/// The value of HVKeyFallbackLocale.
QLocale fallbackContentLocale(const HVContext &context);

/*!
 * The locales in which to look for an entry, in this order: \a preferred, with
 * HVKeyLanguageFallback its language, and the fallback locale.
 *
 * The language of a locale is the locale that Qt chooses for the language and the script, such as
 * fr_FR for fr_CA, and zh_TW for zh_HK.
 */
QVector<QLocale> contentLocales(const HVContext &context, const QLocale &preferred);

/// The locale of HVKeyLocale, else of HVKeyFallbackLocale, else the system's.
QLocale translationLocale(const HVContext &context);

/*!
 * The locales in the names of translation files, such as "fr_CA". The first file that has a text
 * translates it.
 *
 * Without HVKeyLanguageFallback, this is translationLocale(). With it, the language and the
 * fallback locale follow, up to the locale \a written in which the content was written: its texts
 * need no further translation. An empty locale is unknown.
 */
QStringList translationLocaleNames(const HVContext &context, const QString &written);

} // namespace Hovlets
