// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QHash>
#include <QtCore/QJsonObject>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

namespace Hovlets {

/// What the report says about one control.
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
 * \brief All controls seen so far, including those of closed windows, and all keys asked for.
 *
 * Adding a control with the path and class of an earlier one updates that one, whatever the title
 * of its window. The labels of controls without a name must be equal, too, in windows that have
 * neither a name nor a class of the host.
 */
class HVCoverageRecord
{
public:
    void add(const HVControlState &control);
    void addAskedKey(const QString &key);

    /// The parts "totals", "controls" and "entries" of the report; docs/assist.md describes them.
    [[nodiscard]] QJsonObject toJson(const QStringList &entryKeys,
                                     const QString &fallbackKey) const;

private:
    QVector<HVControlState> m_controls; // in the order of discovery
    QHash<QString, int> m_places; // by identity, the index in m_controls
    QSet<QString> m_asked;
};

} // namespace Hovlets
