// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XmlDocument.h"

#include <QtCore/QHash>
#include <QtCore/QLocale>

namespace HovletsTool {

/// A control file that the library indexes, with its entries and their places.
class ControlFile
{
public:
    using Element = XmlDocument::Element;

    struct Entry
    {
        QString key;
        const Element *element = nullptr;
        std::vector<const Element *> below; // all elements inside the entry
    };

    ControlFile(const QString &path, const QString &package);

    [[nodiscard]] const QString &path() const { return m_path; }
    [[nodiscard]] const QString &package() const { return m_package; }
    [[nodiscard]] const XmlDocument &document() const { return m_document; }
    /// Null for a file without any element.
    [[nodiscard]] const Element *root() const;
    [[nodiscard]] const std::vector<Entry> &entries() const { return m_entries; }

    /// Empty for a file for all locales.
    [[nodiscard]] QString locale() const { return m_locale; }
    [[nodiscard]] bool isForAllLocales() const { return m_locale.isEmpty(); }
    [[nodiscard]] bool isFor(const QLocale &locale) const;

    /// Whether a look-up finds the entry in this file. A duplicate key is never found.
    [[nodiscard]] bool serves(const QString &key) const;

    [[nodiscard]] Position position(const Entry &entry) const;

private:
    QString m_path, m_package, m_locale;
    XmlDocument m_document;
    std::vector<Entry> m_entries;
    QHash<QString, int> m_uses; // of each key
};

} // namespace HovletsTool
