// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <map>
#include <tuple>
#include <vector>

namespace HovletsTool {

/// The texts of one widget or action in a Qt Designer form.
struct UiEntry
{
    QString name; // the object name
    QString context; // of the translations: the form's class
    QString toolTip = {}, statusTip = {}, whatsThis = {};
};

/// Reads the named objects of a form that have any of these texts. Throws a ToolError.
[[nodiscard]] std::vector<UiEntry> readForm(const QString &path);

/// Adds \a entry to \a entries. An entry with the same name gets the texts that it lacks instead.
void addEntry(std::vector<UiEntry> &entries, const UiEntry &entry);

/// The text without markup and pictures, with white space reduced to single spaces.
[[nodiscard]] QString plainText(const QString &text);

/// The finished translations of a Qt Linguist file.
class UiTranslation
{
public:
    /// Throws a ToolError for a file that cannot be read or that names no known language.
    explicit UiTranslation(const QString &path);

    [[nodiscard]] QString locale() const { return m_locale; }

    /// Returns \a text itself when it has no translation.
    [[nodiscard]] QString translate(const QString &context, const QString &text) const;

    /// Adds the translations of \a other that are missing here.
    void add(const UiTranslation &other);

    /// Whether any text of the entry has a translation.
    [[nodiscard]] bool hasAny(const UiEntry &entry) const;

private:
    struct Source
    {
        QString context, text;

        bool operator<(const Source &other) const
        {
            return std::tie(context, text) < std::tie(other.context, other.text);
        }
    };

    QString m_locale;
    std::map<Source, QString> m_texts;
};

} // namespace HovletsTool
