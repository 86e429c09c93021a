// SPDX-License-Identifier: Apache-2.0
#include "HVPinnedState.h"

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>

#include <algorithm>

namespace Hovlets {

namespace {

constexpr quint32 Mark = 0x48565050; // "HVPP"
constexpr quint16 Version = 1;
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

bool readPopup(QDataStream &stream, HVPinnedState &popup)
{
    qint32 x = 0;
    qint32 y = 0;
    quint8 stayOnTop = 0;
    if (!readText(stream, popup.key) || !readText(stream, popup.locale))
        return false;
    stream >> x >> y >> stayOnTop;
    popup.position = { x, y };
    popup.stayOnTop = stayOnTop != 0;
    return stream.status() == QDataStream::Ok && stayOnTop <= 1;
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
            && stayOnTop == other.stayOnTop;
}

QByteArray encodePinnedStates(const QVector<HVPinnedState> &popups)
{
    QVector<HVPinnedState> kept = popups;
    kept.erase(std::remove_if(kept.begin(), kept.end(), isTooLong), kept.end());
    kept = kept.mid(0, MaximumPinnedStates);

    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << Mark << Version << static_cast<quint16>(kept.size());
    for (const HVPinnedState &popup : std::as_const(kept)) {
        writeText(stream, popup.key);
        writeText(stream, popup.locale);
        stream << qint32(popup.position.x()) << qint32(popup.position.y())
               << quint8(popup.stayOnTop);
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
    if (stream.status() != QDataStream::Ok || mark != Mark || version != Version
        || count > MaximumPinnedStates)
        return std::nullopt;

    QVector<HVPinnedState> popups;
    for (int i = 0; i < count; ++i) {
        HVPinnedState popup;
        if (!readPopup(stream, popup))
            return std::nullopt;
        popups.append(popup);
    }
    const qint64 end = stream.device()->pos();
    quint32 sum = 0;
    stream >> sum;
    const bool isWhole = stream.status() == QDataStream::Ok && end + ChecksumSize == bytes.size()
            && sum == checksum(bytes.constData(), static_cast<int>(end));
    return isWhole ? std::make_optional(popups) : std::nullopt;
}

} // namespace Hovlets
