// SPDX-License-Identifier: Apache-2.0
#include "HVPinnedState.h"

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>

#include <algorithm>

namespace Hovlets {

namespace {

constexpr quint32 Mark = 0x48565050; // "HVPP"
constexpr quint16 FirstVersion = 1;
constexpr quint16 VersionWithSizes = 2;
constexpr qint32 LargestSize = 32767; // px; of windows on X11
constexpr int ChecksumSize = sizeof(quint32);

/// FNV-1a. It detects accidental damage only: whoever can write the host's settings can also forge
/// the checksum.
quint32 checksum(const char *bytes, int size)
{
    constexpr quint32 OffsetBasis = 2166136261U;
    constexpr quint32 Prime = 16777619U;
    quint32 sum = OffsetBasis;
    std::for_each(bytes, bytes + size,
                  [&](char byte) { sum = (sum ^ static_cast<unsigned char>(byte)) * Prime; });
    return sum;
}

void writeText(QDataStream &stream, const QString &text)
{
    stream << static_cast<quint16>(text.size());
    for (const QChar character : text)
        stream << character.unicode();
}

/// Not QDataStream's own strings, for which a damaged length would allocate memory.
bool readText(QDataStream &stream, QString &text)
{
    quint16 size = 0;
    stream >> size;
    if (size > MaximumPinnedStateText)
        return false;
    for (int i = 0; i < size && stream.status() == QDataStream::Ok; ++i) {
        quint16 unit = 0;
        stream >> unit;
        text.append(QChar(unit));
    }
    return stream.status() == QDataStream::Ok;
}

/// Sizes are empty, or those that a window can have.
bool readSize(QDataStream &stream, QSize &size)
{
    qint32 width = 0;
    qint32 height = 0;
    stream >> width >> height;
    size = { width, height };
    const bool isNone = width == 0 && height == 0;
    const bool isPossible =
            width > 0 && width <= LargestSize && height > 0 && height <= LargestSize;
    return stream.status() == QDataStream::Ok && (isNone || isPossible);
}

bool readPopup(QDataStream &stream, quint16 version, HVPinnedState &popup)
{
    qint32 x = 0;
    qint32 y = 0;
    quint8 stayOnTop = 0;
    if (!readText(stream, popup.key) || !readText(stream, popup.locale))
        return false;
    stream >> x >> y >> stayOnTop;
    popup.position = { x, y };
    popup.stayOnTop = stayOnTop != 0;
    if (stream.status() != QDataStream::Ok || stayOnTop > 1)
        return false;
    return version == FirstVersion || readSize(stream, popup.size);
}

bool hasSize(const HVPinnedState &popup)
{
    return !popup.size.isEmpty();
}

bool isTooLong(const HVPinnedState &popup)
{
    return popup.key.size() > MaximumPinnedStateText
            || popup.locale.size() > MaximumPinnedStateText;
}

} // namespace

bool HVPinnedState::operator==(const HVPinnedState &other) const
{
    return key == other.key && locale == other.locale && position == other.position
            && stayOnTop == other.stayOnTop && size == other.size;
}

QByteArray encodePinnedStates(const QVector<HVPinnedState> &popups)
{
    QVector<HVPinnedState> kept = popups;
    kept.erase(std::remove_if(kept.begin(), kept.end(), isTooLong), kept.end());
    kept = kept.mid(0, MaximumPinnedStates);

    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    const bool haveSizes = std::any_of(kept.cbegin(), kept.cend(), hasSize);
    stream << Mark << (haveSizes ? VersionWithSizes : FirstVersion)
           << static_cast<quint16>(kept.size());
    for (const HVPinnedState &popup : std::as_const(kept)) {
        writeText(stream, popup.key);
        writeText(stream, popup.locale);
        stream << qint32(popup.position.x()) << qint32(popup.position.y())
               << quint8(popup.stayOnTop);
        if (haveSizes)
            stream << qint32(popup.size.width()) << qint32(popup.size.height());
    }
    stream << checksum(bytes.constData(), static_cast<int>(bytes.size()));
    return bytes;
}

std::optional<QVector<HVPinnedState>> decodePinnedStates(const QByteArray &bytes)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_5_15);
    quint32 mark = 0;
    quint16 version = 0;
    quint16 count = 0;
    stream >> mark >> version >> count;
    if (stream.status() != QDataStream::Ok || mark != Mark || version < FirstVersion
        || version > VersionWithSizes || count > MaximumPinnedStates)
        return std::nullopt;

    QVector<HVPinnedState> popups;
    for (int i = 0; i < count; ++i) {
        HVPinnedState popup;
        if (!readPopup(stream, version, popup))
            return std::nullopt;
        popups.append(popup);
    }
    const qint64 end = stream.device()->pos();
    quint32 sum = 0;
    stream >> sum;
    const bool isWhole = stream.status() == QDataStream::Ok && end + ChecksumSize == bytes.size()
            && sum == checksum(bytes.constData(), static_cast<int>(end));
    // One state has one encoding.
    if (version == VersionWithSizes && std::none_of(popups.cbegin(), popups.cend(), hasSize))
        return std::nullopt;
    return isWhole ? std::make_optional(popups) : std::nullopt;
}

} // namespace Hovlets
