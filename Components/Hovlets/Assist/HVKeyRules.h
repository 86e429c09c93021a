// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QRegularExpression>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <optional>

namespace Hovlets {

/*!
 * \brief Rules of authors that replace keys, from a file that is read again when it has changed.
 *
 * Each line is "REGULAR EXPRESSION -> KEY"; the key can refer to groups, as "\1". Empty lines and
 * those that begin with "#" are ignored.
 */
class HVKeyRules
{
public:
    explicit HVKeyRules(const QString &file);

    /*!
     * The key of the first rule whose expression matches one of \a subjects as a whole; empty if
     * the rule removes the key. No value if no rule matches.
     */
    [[nodiscard]] std::optional<QString> keyFor(const QStringList &subjects);

    /// Mistakes, as "file:line: message".
    [[nodiscard]] QStringList errors();

private:
    struct Rule
    {
        QRegularExpression pattern;
        QString key;
    };

    void readIfChanged();
    void readLine(const QString &line, int number);

    QString m_file;
    bool m_wasRead = false;
    QDateTime m_modified; // of the file that was read
    qint64 m_size = -1;
    QVector<Rule> m_rules;
    QStringList m_errors;
};

} // namespace Hovlets
