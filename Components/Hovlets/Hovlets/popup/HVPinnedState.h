// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QPoint>
#include <QtCore/QString>
#include <QtCore/QVector>

#include <optional>

// The bytes in which a host keeps the pinned popups from one run to the next.

namespace Hovlets {

/// What it takes to bring a pinned popup back.
struct HVPinnedState
{
    /// Content key.
    QString key;
    /// Name of the preferred locale when it was pinned, such as "de_DE".
    QString locale;
    /// Top-left corner of the window's frame: global, in pixels.
    QPoint position;
    bool stayOnTop = false;

    bool operator==(const HVPinnedState &other) const;
};

/// Popups beyond this many are left out.
constexpr int MaximumPinnedStates = 256;

/// Popups with a key or locale of more characters than this are left out.
constexpr int MaximumPinnedStateText = 4096;

/*!
 * \brief The bytes for \a popups, in their order.
 *
 * They begin with a mark and the format's version and end with a checksum.
 */
QByteArray encodePinnedStates(const QVector<HVPinnedState> &popups);

/*!
 * \brief The popups that \a bytes hold, or nothing where a single byte is wrong.
 *
 * Bytes that encodePinnedStates() did not make, of a newer version, cut off, extended or altered,
 * do no harm: no more memory is taken than the input has bytes, give or take a constant factor.
 */
std::optional<QVector<HVPinnedState>> decodePinnedStates(const QByteArray &bytes);

} // namespace Hovlets
