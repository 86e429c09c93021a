// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "TextPositions.h"

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace HovletsTool {

/// An error: the library does not serve the content as it is written. A warning: it does, but
/// perhaps the author means something else.
enum class Level { Error, Warning };

[[nodiscard]] QLatin1String nameOf(Level level);

/// A kind of finding. Codes are never reused, because authors search for them and silence them.
struct Rule
{
    const char *code;
    Level level;
    const char *title;
    const char *remedy;
};

/// All rules, sorted by code.
[[nodiscard]] const std::vector<Rule> &rules();
[[nodiscard]] const Rule &rule(const QString &code);

struct Finding
{
    QString code;
    QString file;
    Position position;
    QString message;

    [[nodiscard]] const Rule &rule() const { return HovletsTool::rule(code); }
    /// The message and its remedy.
    [[nodiscard]] QString text() const;
};

/*!
 * \brief The checked files and the findings in them.
 *
 * Lists only the first findings of a long series with the same code in one file.
 */
class FindingList
{
public:
    /// Adds a file that is checked, whether or not it has findings.
    void addFile(const QString &file);
    void add(const char *code, const QString &file, Position position, const QString &message);
    void add(const char *code, const QString &file, const QString &message)
    {
        add(code, file, {}, message);
    }

    [[nodiscard]] const QStringList &files() const { return m_files; }

    /// Sorted by file and position.
    [[nodiscard]] QList<Finding> sorted() const;
    [[nodiscard]] bool isEmpty() const { return m_findings.isEmpty(); }

private:
    QHash<QString, int> m_series; // the number of findings by file and code
    QStringList m_files;
    QSet<QString> m_known; // the same files
    QList<Finding> m_findings;
};

} // namespace HovletsTool
