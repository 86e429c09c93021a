// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XmlDocument.h"

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// A kind of finding. Codes are never given to another kind: authors silence and look for them.
struct Rule
{
    const char *code;
    const char *level; // "error": content is not served as written; "warning": it may not be meant
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

    const Rule &rule() const { return ::rule(code); }
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
