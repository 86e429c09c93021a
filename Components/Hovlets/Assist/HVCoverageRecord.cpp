// SPDX-License-Identifier: Apache-2.0
#include "HVCoverageRecord.h"

#include <QtCore/QJsonArray>
#include <QtCore/QRegularExpression>

#include <algorithm>

namespace Hovlets {

namespace {

/// Whether the control's window has neither an object name nor a class of the host.
bool isInUnknownWindow(const HVControlState &control)
{
    static const QRegularExpression ofQt(QStringLiteral("^Q[A-Z][A-Za-z0-9]*\\[\\d+\\]$"));
    return ofQt.match(control.parents.value(0, control.name)).hasMatch();
}

/*!
 * Equal for the same control at different times. The title of its window is no part of it, because
 * titles change with the document. Labels are part of it only where nothing else tells controls
 * apart, such as the buttons of message boxes that are shown one after the other.
 */
QString identityOf(const HVControlState &control)
{
    QStringList path = control.parents + QStringList { control.name, control.className };
    if (control.objectName.isEmpty() && isInUnknownWindow(control))
        path += control.label;
    return path.join(QChar(0));
}

QJsonObject toJson(const HVControlState &control)
{
    return {
        { QStringLiteral("key"), control.key },
        { QStringLiteral("class"), control.className },
        { QStringLiteral("objectName"), control.objectName },
        { QStringLiteral("label"), control.label },
        { QStringLiteral("window"), control.window },
        { QStringLiteral("parents"), QJsonArray::fromStringList(control.parents) },
        { QStringLiteral("covered"), control.covered },
        { QStringLiteral("answeredByFallback"), control.answeredByFallback },
        { QStringLiteral("parentKey"), control.parentKey },
    };
}

} // namespace

void HVCoverageRecord::add(const HVControlState &control)
{
    addAskedKey(control.key);
    const QString identity = identityOf(control);
    const auto known = m_places.constFind(identity);
    if (known != m_places.constEnd()) {
        m_controls[*known] = control;
        return;
    }
    m_places.insert(identity, int(m_controls.size()));
    m_controls.append(control);
}

void HVCoverageRecord::addAskedKey(const QString &key)
{
    m_asked.insert(key);
}

QJsonObject HVCoverageRecord::toJson(const QStringList &entryKeys, const QString &fallbackKey) const
{
    QJsonArray controls;
    for (const HVControlState &control : m_controls)
        controls.append(Hovlets::toJson(control));

    QStringList keys = entryKeys;
    keys.removeDuplicates();
    QJsonArray entries;
    int asked = 0;
    for (const QString &key : std::as_const(keys)) {
        const bool isFallback = !fallbackKey.isEmpty() && key == fallbackKey;
        const bool isAsked = isFallback || m_asked.contains(key);
        asked += isAsked ? 1 : 0;
        entries.append(QJsonObject { { QStringLiteral("key"), key },
                                     { QStringLiteral("asked"), isAsked },
                                     { QStringLiteral("isFallback"), isFallback } });
    }

    const auto count = [this](bool HVControlState::*what) {
        return int(std::count_if(m_controls.begin(), m_controls.end(),
                                 [what](const HVControlState &control) { return control.*what; }));
    };
    const int covered = count(&HVControlState::covered);
    const QJsonObject totals {
        { QStringLiteral("controls"), int(m_controls.size()) },
        { QStringLiteral("covered"), covered },
        { QStringLiteral("missing"), int(m_controls.size()) - covered },
        { QStringLiteral("answeredByFallback"), count(&HVControlState::answeredByFallback) },
        { QStringLiteral("entries"), int(entries.size()) },
        { QStringLiteral("asked"), asked },
        { QStringLiteral("unasked"), int(entries.size()) - asked },
    };
    return { { QStringLiteral("totals"), totals },
             { QStringLiteral("controls"), controls },
             { QStringLiteral("entries"), entries } };
}

} // namespace Hovlets
