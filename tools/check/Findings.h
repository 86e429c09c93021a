// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XmlDocument.h"

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace HovletsTool {

/// An error: content is not served as written. A warning: it is, but may not be what is meant.
enum class Level { Error, Warning };

[[nodiscard]] QLatin1String nameOf(Level level);

/// A kind of finding. Authors look for codes and silence them: none is ever reused.
struct Rule
{
    const char *code;
    Level level;
    const char *title;
    const char *remedy;
};

/// All kinds, by code.
const std::vector<Rule> &rules();
const Rule &rule(const QString &code);

struct Finding
{
    QString code;
    QString file;
    Position position;
    QString message;

    const Rule &rule() const { return HovletsTool::rule(code); }
    QString text() const; // message and remedy
};

/// What was looked at, and what was found there.
class FindingList
{
public:
    void addFile(const QString &file);
    void add(const char *code, const QString &file, Position position, const QString &message);
    void add(const char *code, const QString &file, const QString &message)
    {
        add(code, file, {}, message);
    }

    const QStringList &files() const { return m_files; }

    /// By file and place.
    QList<Finding> sorted() const;
    bool isEmpty() const { return m_findings.isEmpty(); }

private:
    QStringList m_files;
    QList<Finding> m_findings;
};

} // namespace HovletsTool
