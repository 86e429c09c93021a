// SPDX-License-Identifier: Apache-2.0
#include "HVContentLocale.h"

#include "HVContext.h"

namespace Hovlets {

namespace {

QLocale languageOf(const QLocale &locale)
{
    return QLocale(locale.language(), locale.script(), QLocale::AnyCountry);
}

/// The names of \a locale in translation files: with its country and, if Qt reads the language
/// alone as this locale, without it.
QStringList fileNamesOf(const QLocale &locale)
{
    QStringList names { locale.name() };
    const QString language = names.constFirst().section(QLatin1Char('_'), 0, 0);
    if (QLocale(language) == locale)
        names += language;
    return names;
}

bool fallsBackToLanguage(const HVContext &context)
{
    return context.get(HVKeyLanguageFallback).toBool();
}

} // namespace

QLocale preferredContentLocale(const HVContext &context)
{
    return QLocale(context.get(HVKeyLocale).toString());
}

QLocale fallbackContentLocale(const HVContext &context)
{
    return QLocale(context.get(HVKeyFallbackLocale).toString());
}

QVector<QLocale> contentLocales(const HVContext &context, const QLocale &preferred)
{
    const QLocale language = languageOf(preferred);
    const QLocale fallback = fallbackContentLocale(context);
    if (fallsBackToLanguage(context) && language != preferred)
        return { preferred, language, fallback };
    return { preferred, fallback };
}

QLocale translationLocale(const HVContext &context)
{
    // Unlike content, translations do not default to "en_US": without a setting, the system's
    // locale is next.
    for (const contextKey key : { HVKeyLocale, HVKeyFallbackLocale }) {
        const QString name = context.get(key, QString()).toString();
        if (!name.isEmpty())
            return QLocale(name);
    }
    return QLocale::system();
}

QStringList translationLocaleNames(const HVContext &context, const QString &written)
{
    const QLocale preferred = translationLocale(context);
    QStringList names { preferred.name() };
    if (!fallsBackToLanguage(context))
        return names;
    for (const QLocale &locale :
         { preferred, languageOf(preferred), fallbackContentLocale(context) }) {
        names += fileNamesOf(locale);
        if (!written.isEmpty() && QLocale(written) == locale)
            break;
    }
    names.removeDuplicates();
    return names;
}

} // namespace Hovlets
