// SPDX-License-Identifier: Apache-2.0
#include "PseudoText.h"

#include <HVMarkup.h>

#include <QtCore/QRegularExpression>

namespace HovletsTool {

namespace {

/// A letter with an accent, or another one that resembles it.
QChar accented(QChar letter)
{
    static const QString plain =
            QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    static const QString changed =
            QStringLiteral("ÅƁÇÐÉƑĜĤÎĴĶĻṀÑÖÞǪŔŠŢÛṼŴẊÝŽåƀçðéƒĝĥîĵķļɱñöþǫŕšţûṽŵẋýž");
    const auto index = plain.indexOf(letter);
    return index < 0 ? letter : changed.at(index);
}

/// Characters without meaning, in words, so that lines break between them.
QString filler(int size)
{
    constexpr int Word = 6;
    QString text(size, QLatin1Char('~'));
    for (int i = Word; i < size - 1; i += Word + 1)
        text[i] = QLatin1Char(' ');
    return text;
}

/// Appends \a text with other letters. Returns the number of its characters.
int appendAccented(QString &result, const QString &text)
{
    for (const QChar c : text)
        result += accented(c);
    return static_cast<int>(text.size());
}

} // namespace

QString pseudoText(const QString &text, int expansion)
{
    static const QRegularExpression inMarkup(QStringLiteral("%\\([-\\w]+\\)s|<[^<>]*>|&#?\\w+;"));
    static const QRegularExpression inPlainText(QStringLiteral("%\\([-\\w]+\\)s"));
    QString result(QLatin1Char('['));
    int size = 0;
    int end = 0;
    auto kept = (Hovlets::isMarkup(text) ? inMarkup : inPlainText).globalMatch(text);
    while (kept.hasNext()) {
        const auto match = kept.next();
        size += appendAccented(result, text.mid(end, match.capturedStart() - end));
        result += match.captured();
        end = static_cast<int>(match.capturedEnd());
    }
    size += appendAccented(result, text.mid(end));
    constexpr int Hundred = 100;
    const int more = (size * expansion + Hundred - 1) / Hundred;
    if (more > 0)
        result += QLatin1Char(' ') + filler(more);
    return result + QLatin1Char(']');
}

} // namespace HovletsTool
