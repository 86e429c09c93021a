// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <map>
#include <tuple>
#include <vector>

namespace HovletsTool {

/// What a Qt Designer file says of one widget or action.
struct UiEntry
{
    QString name; // of the object
    QString context; // of its translations: the form's class
    QString toolTip = {}, statusTip = {}, whatsThis = {};
};

/// The named objects of a form that have any of these texts to read. Throws a ToolError.
std::vector<UiEntry> readForm(const QString &path);

/// Adds \a entry, or to an entry of its name the texts that this lacks.
void addEntry(std::vector<UiEntry> &entries, const UiEntry &entry);

/// What there is to read: without markup and pictures, white space collapsed.
QString plainText(const QString &text);

/*!
 * \brief The finished translations of a Qt Linguist file.
 */
class UiTranslation
{
public:
    /// Throws a ToolError for a file that cannot be read, or that names no known language.
    explicit UiTranslation(const QString &path);

    QString locale() const { return m_locale; }

    /// \a text itself when it is not translated.
    QString translate(const QString &context, const QString &text) const;

    /// Adds what \a other has translated and this has not.
    void add(const UiTranslation &other);

    /// Whether any of the entry's texts is translated.
    bool hasAny(const UiEntry &entry) const;

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
