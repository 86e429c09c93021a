// SPDX-License-Identifier: Apache-2.0
#include "HVInterpolation.h"

#include <QtCore/QVector>

#include <algorithm>

namespace Hovlets {

namespace {

struct Placeholder
{
    qsizetype start = -1; // negative when there is none
    qsizetype end = -1;
    QString name;
};

/// A value that was put into the text and is being scanned.
struct Expansion
{
    QString name;
    qsizetype tail; // characters behind it: its end moves while it grows, this does not
};

bool isNameCharacter(QChar c)
{
    return (c >= QLatin1Char('a') && c <= QLatin1Char('z'))
            || (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
            || (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('-')
            || c == QLatin1Char('_');
}

/// The first placeholder at or behind \a from. By hand: a regular expression finds nothing in a
/// text that is not well-formed UTF-16, as text from QML may be.
Placeholder nextPlaceholder(const QString &text, qsizetype from)
{
    const QLatin1String opening("%(");
    const QLatin1String closing(")s");
    for (qsizetype start = text.indexOf(opening, from); start >= 0;
         start = text.indexOf(opening, start + 1)) {
        const auto nameStart = text.cbegin() + start + opening.size();
        const auto nameEnd = std::find_if_not(nameStart, text.cend(), isNameCharacter);
        const qsizetype end = nameEnd - text.cbegin();
        if (nameEnd != nameStart && QStringView(text).mid(end).startsWith(closing))
            return { start, end + closing.size(), QString(nameStart, nameEnd - nameStart) };
    }
    return {};
}

} // namespace

QString interpolated(const QString &text, const QMap<QString, QVariant> &values)
{
    QString result = text;
    QVector<Expansion> open; // innermost last
    qsizetype pos = 0;
    while (true) {
        const Placeholder found = nextPlaceholder(result, pos);
        if (found.start < 0)
            return result;
        // One that reaches beyond an expansion uses up text from outside, which is finite: only
        // one that lies wholly inside an expansion of its own name goes round for ever.
        const qsizetype tail = result.size() - found.end;
        while (!open.isEmpty() && tail < open.constLast().tail)
            open.removeLast();
        const bool isCycle = std::any_of(open.cbegin(), open.cend(), [&found](const Expansion &e) {
            return e.name == found.name;
        });
        const QString replacement = isCycle ? QString() : values.value(found.name).toString();
        if (replacement.isNull()) {
            pos = found.end;
            continue;
        }
        pos = found.start;
        result.replace(pos, found.end - found.start, replacement);
        open.append({ found.name, tail });
    }
}

} // namespace Hovlets
