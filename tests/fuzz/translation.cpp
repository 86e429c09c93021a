// SPDX-License-Identifier: Apache-2.0
// Checks that QTranslator can read every translation file that the check lets through.
#include "FuzzTarget.h"
#include "GuardedBytes.h"
#include "HVTranslationCheck.h"

#include <QtCore/QList>
#include <QtCore/QTranslator>

using namespace Hovlets;

namespace {

constexpr qsizetype MostTexts = 32;

/// The bytes after each tag with that number and the length that follows it, wherever they are.
QList<QByteArray> tagged(const QByteArray &file, char tag)
{
    constexpr qsizetype Header = 5;
    QList<QByteArray> texts;
    for (qsizetype at = file.indexOf(tag); at >= 0 && texts.size() < MostTexts;
         at = file.indexOf(tag, at + 1)) {
        if (file.mid(at + 1, 3) == QByteArray(3, '\0') && at + Header <= file.size())
            texts.append(file.mid(at + Header, static_cast<uchar>(file.at(at + 4))));
    }
    return texts;
}

/*!
 * A text whose hash is \a hash, which has 28 bits. The hash of a short text is that of a number
 * with base 16. No byte of a text is 0; therefore the digits are 1 to 16.
 */
QByteArray textWithHash(quint32 hash)
{
    QByteArray text;
    for (; hash > 0; hash = (hash - 1) / 16)
        text.prepend(static_cast<char>((hash - 1) % 16 + 1));
    return text;
}

/// Texts that have the hashes in a file, if its bytes are a list of hashes and offsets.
QList<QByteArray> textsWithHashesIn(const QByteArray &file)
{
    QList<QByteArray> texts;
    const qsizetype section = file.indexOf('\x42', 16);
    for (qsizetype at = section + 5; section >= 0 && at + 4 <= file.size(); at += 8) {
        const QByteArray bytes = file.mid(at, 4);
        quint32 hash = 0;
        for (const char byte : bytes)
            hash = hash << 8 | static_cast<uchar>(byte);
        texts.append(textWithHash(hash & 0xfffffff));
        if (texts.size() == MostTexts)
            break;
    }
    return texts;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray file =
            completedTranslation(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    if (!translationProblem(file).isNull())
        return 0;
    // The sanitizers do not see what Qt reads; the guard does.
    const GuardedBytes guarded(file);
    QTranslator translator;
    if (!translator.load(guarded.data(), static_cast<int>(file.size())))
        return 0;
    const QList<QByteArray> texts =
            tagged(file, '\x06') + textsWithHashesIn(file) + QList<QByteArray> { "", "Open" };
    const QList<QByteArray> contexts =
            tagged(file, '\x07').mid(0, 4) + QList<QByteArray> { "", "Menu", "\x01", "\x02" };
    for (const QByteArray &context : contexts) {
        for (const QByteArray &text : texts)
            translator.translate(context.constData(), text.constData());
    }
    return 0;
}
