// SPDX-License-Identifier: Apache-2.0
#include "HVInterpolation.h"

#include <QtCore/QVector>

#include <algorithm>
#include <iterator>

namespace Hovlets {

namespace {

constexpr qsizetype Opening = 2; // "%("
constexpr qsizetype Closing = 2; // ")s"

/// A value that was inserted into the text and is being scanned.
struct Expansion
{
    QString name;
    qsizetype tail; // number of characters after it, which stays constant while it grows
};

bool isInPlaceholder(QChar c)
{
    return (c >= QLatin1Char('a') && c <= QLatin1Char('z'))
            || (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
            || (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('-')
            || c == QLatin1Char('_');
}

/*!
 * \brief The part of a text that remains to be scanned.
 *
 * Stores its characters in reverse, which makes replacing text at the front cost no more than the
 * text removed and inserted.
 */
class Rest
{
public:
    explicit Rest(const QString &text) { prepend(text); }

    qsizetype size() const { return m_reversed.size(); }
    QChar at(qsizetype index) const
    {
        return index < size() ? m_reversed.at(size() - 1 - index) : QChar();
    }

    QString first(qsizetype length) const
    {
        QString text;
        text.reserve(length);
        std::copy_n(m_reversed.crbegin(), length, std::back_inserter(text));
        return text;
    }

    void drop(qsizetype length) { m_reversed.chop(length); }

    void prepend(const QString &text)
    {
        std::for_each(text.crbegin(), text.crend(), [this](QChar c) { m_reversed += c; });
    }

private:
    QString m_reversed;
};

/// The length of the name in the placeholder at the start of the text, or 0 if there is none. Not a
/// regular expression, because those fail on text that is not well-formed UTF-16, which QML may
/// pass.
qsizetype placeholderName(const Rest &rest)
{
    if (rest.at(0) != QLatin1Char('%') || rest.at(1) != QLatin1Char('('))
        return 0;
    qsizetype end = Opening;
    while (isInPlaceholder(rest.at(end)))
        ++end;
    const bool isClosed = rest.at(end) == QLatin1Char(')') && rest.at(end + 1) == QLatin1Char('s');
    return isClosed ? end - Opening : 0;
}

} // namespace

QString interpolated(const QString &text, const QMap<QString, QVariant> &values)
{
    Rest rest(text);
    QString result;
    result.reserve(text.size());
    QVector<Expansion> open; // innermost last
    while (rest.size() > 0) {
        const qsizetype nameLength = placeholderName(rest);
        if (nameLength == 0) {
            result += rest.at(0);
            rest.drop(1);
            continue;
        }
        const QString placeholder = rest.first(Opening + nameLength + Closing);
        const QString name = placeholder.mid(Opening, nameLength);
        rest.drop(placeholder.size());
        // A placeholder that extends past an expansion consumes text from outside, which is finite.
        // Only one that lies completely inside an expansion of its own name would recurse forever.
        const qsizetype tail = rest.size();
        while (!open.isEmpty() && tail < open.constLast().tail)
            open.removeLast();
        const bool isCycle = std::any_of(open.cbegin(), open.cend(),
                                         [&name](const Expansion &e) { return e.name == name; });
        const QString replacement = isCycle ? QString() : values.value(name).toString();
        if (replacement.isNull()) {
            result += placeholder;
            continue;
        }
        rest.prepend(replacement);
        open.append({ name, tail });
    }
    return result;
}

} // namespace Hovlets
