// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QPoint>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QVector>

#include <optional>

// The format in which a host stores the pinned popups from one run to the next.

namespace Hovlets {

/// The data from which a pinned popup is restored.
struct HVPinnedState
{
    /// Content key.
    QString key;
    /// Name of the preferred locale when it was pinned, such as "de_DE".
    QString locale;
    /// Top-left corner of the window's frame: global, in pixels.
    QPoint position;
    bool stayOnTop = false;
    /// Size that the user gave the popup's view; empty if its content determines it.
    QSize size { 0, 0 };

    [[nodiscard]] bool operator==(const HVPinnedState &other) const;
};

/// The maximum number of popups to store; the rest are omitted.
constexpr int MaximumPinnedStates = 256;

/// Popups with a longer key or locale are omitted.
constexpr int MaximumPinnedStateText = 4096;

/*!
 * \brief Encodes \a popups in their order.
 *
 * The bytes start with a signature and the format version, and end with a checksum. Without sizes,
 * they are those of the first version, which all releases can decode.
 */
QByteArray encodePinnedStates(const QVector<HVPinnedState> &popups);

/*!
 * \brief Decodes \a bytes; no value if a single byte is wrong.
 *
 * Bytes from another source, of a newer version, or truncated, extended or altered bytes are
 * harmless: memory use is proportional to the size of the input.
 */
std::optional<QVector<HVPinnedState>> decodePinnedStates(const QByteArray &bytes);

} // namespace Hovlets
