// SPDX-License-Identifier: Apache-2.0
#include "KnownLocale.h"

#include <QtCore/QLocale>
#include <QtCore/QRegularExpression>

namespace HovletsTool {

bool isKnownLocale(const QString &name)
{
    const QLocale locale(name);
    if (locale.language() == QLocale::C)
        return name == QLatin1String("C");
    // A territory that is not known is left out, and another one taken in its place.
    static const QRegularExpression territory(QStringLiteral("[-_]([A-Z]{2}|[0-9]{3})\\b"));
    const auto match = territory.match(name);
    // Whether a script is known, Qt tells of none; without a territory it is as good as a language.
    static const QRegularExpression withoutTerritory(
            QStringLiteral("^[^-_]+([-_][A-Z][a-z]{3})?$"));
    const bool isShort = withoutTerritory.match(name).hasMatch();
    return isShort
            || (match.hasMatch()
                && locale.name().section(QLatin1Char('_'), 1) == match.captured(1));
}

} // namespace HovletsTool
