// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

class QObject;
class QPoint;
class QWidget;

namespace Hovlets {

/// A key that a control may have, and the area that it is for: global, in pixels.
struct HVKeyCandidate
{
    QString key;
    QRect area;
};

/*!
 * \brief The keys of a control or of a part, the most specific first.
 */
class HVControlKeys
{
public:
    /// Adds a key unless it is empty or already present.
    void add(const QString &key, const QRect &area);

    /// Adds \a name, and before it \a name with each of the forms around \a scope.
    void addName(const QString &name, const QObject *scope, const QRect &area);

    /// Adds the keys of \a other.
    void add(const HVControlKeys &other);

    /// Makes \a key, from the property "hovletKey", the only one. It may be empty.
    void fix(const QString &key, const QRect &area);

    /// The candidate under which to write an entry; null if there is none.
    [[nodiscard]] const HVKeyCandidate *preferred() const;

    [[nodiscard]] QStringList keys() const;

    QVector<HVKeyCandidate> candidates;
    bool isFixed = false;
    QString path; // for rules

private:
    int m_preferred = 0; // the index of the candidate
};

/// The area of a widget: global, in pixels.
QRect areaOf(const QWidget *widget);

/// Sets the key to the property "hovletKey" of the object; false if it has none.
bool fixKey(HVControlKeys &keys, const QObject *object, const QRect &area);

/*!
 * The keys of an object as a whole, and of the control that it is a part of. For
 * \a windowsHaveKeys, see HVStandardKeysSettings.
 */
HVControlKeys keysOfWhole(const QObject *object, bool windowsHaveKeys);

/// The control that Qt has built with \a part, such as the spin box of a line edit, or null.
const QWidget *ownerOf(const QWidget *part);

} // namespace Hovlets
