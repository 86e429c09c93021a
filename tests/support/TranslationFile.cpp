// SPDX-License-Identifier: Apache-2.0
#include "TranslationFile.h"

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>

namespace {

enum Tag : quint8 { End = 1, Translation = 3, SourceText = 6, Context = 7 };
enum Section : quint8 { Hashes = 0x42, Messages = 0x69 };

/// The hash by which entries are found.
quint32 elfHash(const QByteArray &text)
{
    quint32 hash = 0;
    for (const char c : text) {
        hash = (hash << 4) + static_cast<uchar>(c);
        const quint32 top = hash & 0xf0000000;
        hash ^= top >> 24;
        hash &= ~top;
    }
    return hash == 0 ? 1 : hash;
}

void writeBytes(QDataStream &stream, quint8 tag, const QByteArray &bytes)
{
    stream << tag << static_cast<quint32>(bytes.size());
    stream.writeRawData(bytes.constData(), static_cast<int>(bytes.size()));
}

} // namespace

QByteArray translationFile(const QByteArray &context, const QByteArray &text,
                           const QString &translation)
{
    QByteArray utf16;
    QDataStream characters(&utf16, QIODevice::WriteOnly);
    for (const QChar c : translation)
        characters << static_cast<quint16>(c.unicode());

    QByteArray messages;
    QDataStream entry(&messages, QIODevice::WriteOnly);
    writeBytes(entry, Translation, utf16);
    writeBytes(entry, SourceText, text);
    writeBytes(entry, Context, context);
    entry << static_cast<quint8>(End);

    QByteArray hashes;
    QDataStream hash(&hashes, QIODevice::WriteOnly);
    hash << elfHash(text) << quint32(0); // the entry's place among the messages

    QByteArray file = QByteArray::fromHex("3cb86418caef9c95cd211cbf60a1bddd");
    QDataStream sections(&file, QIODevice::WriteOnly | QIODevice::Append);
    writeBytes(sections, Hashes, hashes);
    writeBytes(sections, Messages, messages);
    return file;
}
