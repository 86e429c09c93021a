// SPDX-License-Identifier: Apache-2.0
#include "Explanation.h"

#include "AttachedHost.h"

#include <QtCore/QLocale>
#include <QtWidgets/QWidget>

namespace Hovlets {

namespace {

/// The file with the entry for a key. The author's file comes first: its entries win over those of
/// other folders, but the host may answer from a popup that shows an older entry.
QString fileOf(AttachedHost &host, const RecordedFile &own, const QString &key)
{
    if (own.find(key))
        return own.path();
    return host.hovletAttribute(key, QStringLiteral("HVLocation"), {});
}

QString localeReason(const HVContext &settings, const QString &locale)
{
    const auto isNamed = [&](contextKey key) {
        return QLocale(settings.get(key).toString()) == QLocale(locale);
    };
    if (locale.isEmpty())
        return QStringLiteral("for all locales");
    if (isNamed(HVKeyLocale))
        return QStringLiteral("for %1, the preferred locale").arg(locale);
    if (isNamed(HVKeyFallbackLocale))
        return QStringLiteral("for %1, the fallback locale").arg(locale);
    return QStringLiteral("for %1").arg(locale);
}

QString sourceOf(AttachedHost &host, const RecordedFile &own, const QString &key)
{
    const QString file = fileOf(host, own, key);
    const auto found = RecordedFile(file).find(key);
    if (!found)
        return QStringLiteral("the entry \"%1\" in %2").arg(key, file);
    return QStringLiteral("the entry \"%1\" %2, in %3:%4")
            .arg(key, localeReason(host.context(), found->locale), file)
            .arg(found->line);
}

/// What Qt shows when a control has no entry: its tooltip, or what its parents show.
QString reasonWithoutEntry(AttachedHost &host, const RecordedFile &own, QWidget *widget,
                           const QPoint &position)
{
    const QString fallback = host.context().get(HVKeyFallbackKey).toString();
    if (!fallback.isEmpty() && !fileOf(host, own, fallback).isEmpty())
        return QStringLiteral("It has no entry. For the fallback key: %1.")
                .arg(sourceOf(host, own, fallback));
    for (QWidget *each = widget; each && !each->isWindow(); each = each->parentWidget()) {
        if (!each->toolTip().isEmpty())
            return QStringLiteral("It has no entry. The program's tooltip shows: \"%1\".")
                    .arg(each->toolTip().simplified());
        QWidget *parent = each->parentWidget();
        const HVKeyedControl outer = host.standardKeys().find(parent, position);
        if (outer.hasEntry)
            return QStringLiteral("It has no entry. That of a parent shows: %1.")
                    .arg(sourceOf(host, own, outer.key));
    }
    return QStringLiteral("It has no entry.");
}

} // namespace

Explanation explain(AttachedHost &host, const RecordedFile &own, QWidget *widget,
                    const QPoint &position)
{
    Explanation explanation;
    explanation.control = host.standardKeys().find(widget, position);
    const QString key = explanation.control.key;
    if (key.isEmpty()) {
        explanation.reason =
                QStringLiteral("It has no key. Give it one with a rule that matches its path.");
    } else if (!explanation.control.hasEntry) {
        explanation.reason = reasonWithoutEntry(host, own, widget, position);
    } else {
        explanation.file = fileOf(host, own, key);
        explanation.entry = RecordedFile(explanation.file).find(key);
        explanation.reason = QStringLiteral("Shows %1.").arg(sourceOf(host, own, key));
    }
    return explanation;
}

} // namespace Hovlets
