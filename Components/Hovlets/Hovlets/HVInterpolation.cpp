// SPDX-License-Identifier: Apache-2.0
#include "HVInterpolation.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QVector>

#include <algorithm>

namespace Hovlets {

namespace {

/// A value that was put into the text and is being scanned.
struct Expansion
{
    QString name;
    qsizetype tail; // characters behind it: its end moves while it grows, this does not
};

} // namespace

QString interpolated(const QString &text, const QMap<QString, QVariant> &values)
{
    static const QRegularExpression placeholder(QStringLiteral("%\\(([-_a-zA-Z0-9]+)\\)s"));
    QString result = text;
    QVector<Expansion> open; // innermost last
    qsizetype pos = 0;
    while (true) {
        const QRegularExpressionMatch match = placeholder.match(result, pos);
        if (!match.hasMatch())
            return result;
        const QString name = match.captured(1);
        // A match that reaches beyond an expansion uses up text from outside, which is finite:
        // only one that lies wholly inside an expansion of its own name goes round for ever.
        const auto tail = result.size() - match.capturedEnd();
        while (!open.isEmpty() && tail < open.constLast().tail)
            open.removeLast();
        const bool isCycle = std::any_of(open.cbegin(), open.cend(),
                                         [&name](const Expansion &e) { return e.name == name; });
        const QString replacement = isCycle ? QString() : values.value(name).toString();
        if (replacement.isNull()) {
            pos = match.capturedEnd();
            continue;
        }
        pos = match.capturedStart();
        result.replace(pos, match.capturedLength(), replacement);
        open.append({ name, tail });
    }
}

} // namespace Hovlets
