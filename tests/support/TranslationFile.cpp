// SPDX-License-Identifier: Apache-2.0
#include "TranslationFile.h"

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QMap>

namespace {

enum Tag : quint8 { End = 1, Translation = 3, SourceText = 6, Context = 7 };
enum Section : quint8 { Contexts = 0x2f, Hashes = 0x42, Messages = 0x69 };

constexpr quint16 ContextBuckets = 5;

/// The hash that finds a message.
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

QByteArray translationFile(const QList<TranslationMessage> &messages, bool withContexts)
{
    QByteArray texts;
    QDataStream entry(&texts, QIODevice::WriteOnly);
    QMap<quint32, QList<quint32>> places; // positions in the list of messages, by hash
    QMap<quint16, QByteArray> buckets;
    for (const TranslationMessage &message : messages) {
        places[elfHash(message.text)] += static_cast<quint32>(texts.size());
        QByteArray utf16;
        QDataStream characters(&utf16, QIODevice::WriteOnly);
        for (const QChar c : message.translation)
            characters << static_cast<quint16>(c.unicode());
        writeBytes(entry, Translation, utf16);
        writeBytes(entry, SourceText, message.text);
        writeBytes(entry, Context, message.context);
        entry << static_cast<quint8>(End);
        buckets[static_cast<quint16>(elfHash(message.context) % ContextBuckets)] +=
                static_cast<char>(message.context.size()) + message.context;
    }

    QByteArray hashes;
    QDataStream hash(&hashes, QIODevice::WriteOnly);
    for (auto it = places.cbegin(); it != places.cend(); ++it) {
        for (const quint32 place : it.value())
            hash << it.key() << place;
    }

    QByteArray names(2, '\0'); // no offset may be 0
    QByteArray contexts;
    QDataStream table(&contexts, QIODevice::WriteOnly);
    table << ContextBuckets;
    for (quint16 bucket = 0; bucket < ContextBuckets; ++bucket) {
        const QByteArray bytes = buckets.value(bucket);
        table << static_cast<quint16>(bytes.isEmpty() ? 0 : names.size() / 2);
        if (!bytes.isEmpty())
            names += bytes + QByteArray(bytes.size() % 2 == 0 ? 2 : 1, '\0');
    }

    QByteArray file = QByteArray::fromHex("3cb86418caef9c95cd211cbf60a1bddd");
    QDataStream sections(&file, QIODevice::WriteOnly | QIODevice::Append);
    writeBytes(sections, Hashes, hashes);
    writeBytes(sections, Messages, texts);
    if (withContexts)
        writeBytes(sections, Contexts, contexts + names);
    return file;
}

QByteArray translationFile(const QByteArray &context, const QByteArray &text,
                           const QString &translation)
{
    return translationFile(QList<TranslationMessage> { { context, text, translation } });
}
