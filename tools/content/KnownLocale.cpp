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
    // QLocale replaces an unknown territory with another one.
    static const QRegularExpression territory(QStringLiteral("[-_]([A-Z]{2}|[0-9]{3})\\b"));
    const auto match = territory.match(name);
    // QLocale does not say whether it knows a script, so a script without a territory is accepted.
    static const QRegularExpression withoutTerritory(
            QStringLiteral("^[^-_]+([-_][A-Z][a-z]{3})?$"));
    const bool isShort = withoutTerritory.match(name).hasMatch();
    return isShort
            || (match.hasMatch()
                && locale.name().section(QLatin1Char('_'), 1) == match.captured(1));
}

} // namespace HovletsTool
