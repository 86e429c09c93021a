// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XmlDocument.h"

#include <QtCore/QHash>
#include <QtCore/QLocale>

namespace HovletsTool {

/// A control file that the library serves, with what it says of itself.
class ControlFile
{
public:
    using Element = XmlDocument::Element;

    struct Entry
    {
        QString key;
        const Element *element = nullptr;
        std::vector<const Element *> below; // all elements in it
    };

    ControlFile(const QString &path, const QString &package);

    const QString &path() const { return m_path; }
    const QString &package() const { return m_package; }
    const XmlDocument &document() const { return m_document; }
    const Element *root() const;
    const std::vector<Entry> &entries() const { return m_entries; }

    /// Empty for all locales.
    QString locale() const { return m_locale; }
    bool isForAllLocales() const { return m_locale.isEmpty(); }
    bool isFor(const QLocale &locale) const;

    /// Whether the library finds the entry here when it looks into the file: not with two of it.
    bool serves(const QString &key) const;

    Position position(const Entry &entry) const;

private:
    QString m_path, m_package, m_locale;
    XmlDocument m_document;
    std::vector<Entry> m_entries;
    QHash<QString, int> m_uses; // of each key
};

} // namespace HovletsTool
