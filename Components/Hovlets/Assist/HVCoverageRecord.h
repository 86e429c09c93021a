// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QHash>
#include <QtCore/QJsonObject>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

namespace Hovlets {

/// What is known of one control.
struct HVControlState
{
    QString key;
    QString className;
    QString objectName;
    QString label;
    QString window;
    QString name; // last part of its path
    QStringList parents;
    bool covered = false;
    bool answeredByFallback = false;
    QString parentKey;
};

/*!
 * \brief All controls that were seen, also in windows that are gone, and all keys asked for.
 *
 * A control is the same when it is found again at the same place with the same class; what is known
 * of it is then brought up to date.
 */
class HVCoverageRecord
{
public:
    void add(const HVControlState &control);
    void addAskedKey(const QString &key);

    /// The parts "totals", "controls" and "entries" of the report; docs/assist.md describes them.
    QJsonObject toJson(const QStringList &entryKeys, const QString &fallbackKey) const;

private:
    QVector<HVControlState> m_controls; // in the order in which they were met
    QHash<QString, int> m_places; // in m_controls
    QSet<QString> m_asked;
};

} // namespace Hovlets
