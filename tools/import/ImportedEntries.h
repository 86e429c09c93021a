// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "FormReader.h"
#include "LinguistFile.h"
#include "TipText.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <vector>

namespace HovletsTool {

/// An entry of a control file.
struct ImportedEntry
{
    QString key;
    QString title;
    QString shortcut;
    std::vector<TipParagraph> body;
    QString icon = {}; // a path in the resources; empty for none
};

/// A text without a finished translation.
struct UntranslatedText
{
    QString key;
    QString text;
    LinguistFile::State state;
};

/// The entries in one language, and what became of the texts that they show.
struct TranslatedEntries
{
    std::vector<ImportedEntry> entries;
    int translated = 0; // texts
    std::vector<UntranslatedText> untranslated;
};

/*!
 * \brief The controls of all forms, each with the key of its entry.
 *
 * The key is the object's name. Objects of the same name in several forms share an entry if their
 * tips do not contradict each other; otherwise the name of the form comes first, as in
 * "Preferences/width".
 */
class ImportedControls
{
public:
    struct Control
    {
        QString key;
        FormObject object;
    };

    /*!
     * \param translations in which equal texts of two forms may differ
     * \param qualified whether the name of the form comes first in every key
     */
    ImportedControls(const std::vector<FormObject> &objects,
                     const std::vector<LinguistFile> &translations, bool qualified);

    [[nodiscard]] const std::vector<Control> &all() const { return m_controls; }

    /// The names with contradicting texts, each with its forms, such as "width (Options, Pen)".
    [[nodiscard]] QStringList conflicts() const { return m_conflicts; }

    /// The entries as the forms have them.
    [[nodiscard]] std::vector<ImportedEntry> entries() const;

    /// The entries with a translated text. \a unfinished tells whether translations that nobody has
    /// confirmed count as translations.
    [[nodiscard]] TranslatedEntries translated(const LinguistFile &translations,
                                               bool unfinished) const;

private:
    void addSameNames(const std::vector<FormObject> &objects,
                      const std::vector<LinguistFile> &translations);

    std::vector<Control> m_controls;
    QStringList m_conflicts;
};

} // namespace HovletsTool
