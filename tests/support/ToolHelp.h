// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ToolRun.h"

#include <QtCore/QList>
#include <QtCore/QRegularExpression>
#include <QtCore/QString>
#include <QtCore/QStringList>

/*!
 * \brief The help text of the program for authors, or of one of its commands, parsed.
 */
class ToolHelp
{
public:
    /// An argument, an option or a command.
    struct Item
    {
        QString name; // "-o,--output"
        QString kind; // "TEXT REQUIRED"
        QString description;

        bool isOption() const { return name.startsWith(QLatin1Char('-')); }
        bool isCommand() const { return !isOption() && kind.isEmpty(); }
        QString longName() const { return name.section(QLatin1Char(','), -1); }

        /// The allowed values if they are a fixed set.
        QStringList values() const
        {
            static const QRegularExpression set(QStringLiteral("\\{(.*)\\}"));
            return set.match(kind).captured(1).split(QLatin1Char(','), Qt::SkipEmptyParts);
        }
    };

    explicit ToolHelp(const QString &command = {})
    {
        const QString help =
                QString::fromUtf8(ToolRun(words(command) + words(QStringLiteral("--help"))).output);
        static const QRegularExpression line(QStringLiteral("^Usage: (.*)$"),
                                             QRegularExpression::MultilineOption);
        usage = line.match(help).captured(1);
        // There are two columns; an entry that is too wide for the first ends its line.
        static const QRegularExpression row(
                QStringLiteral("^  (?=\\S)(?!hovlets )(?:(.{28,})\\n {30}|(.{27}) )(\\S.*)$"),
                QRegularExpression::MultilineOption);
        auto rows = row.globalMatch(help);
        while (rows.hasNext()) {
            const auto match = rows.next();
            const QString left = (match.captured(1) + match.captured(2)).trimmed();
            items.append({ left.section(QLatin1Char(' '), 0, 0),
                           withEqualsSign(left.section(QLatin1Char(' '), 1)), match.captured(3) });
        }
    }

    /// Before version 2.4, CLI11 wrote "TEXT=default"; since then, it writes "TEXT [default]".
    static QString withEqualsSign(QString kind)
    {
        static const QRegularExpression bracketed(QStringLiteral(" \\[([^\\]]*)\\]$"));
        return kind.replace(bracketed, QStringLiteral("=\\1"));
    }

    /// The words of a command, such as "translate status".
    static QStringList words(const QString &command)
    {
        return command.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    }

    /// The words that can come after the program's name or after the name of a group of commands.
    static QStringList next(const QString &group = {})
    {
        QStringList names;
        const QList<Item> all = ToolHelp(group).items;
        for (const Item &item : all) {
            if (item.isCommand())
                names += item.name;
        }
        return names;
    }

    /// All commands, those of a group after its name.
    static QStringList commands()
    {
        QStringList names;
        const QStringList firsts = next();
        for (const QString &first : firsts) {
            const QStringList members = next(first);
            if (members.isEmpty())
                names += first;
            for (const QString &member : members)
                names += first + QLatin1Char(' ') + member;
        }
        return names;
    }

    QString usage; // "hovlets list [OPTIONS] PATH..."
    QList<Item> items;
};
