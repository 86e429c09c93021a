// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "EntryTexts.h"

#include <QtCore/QDir>
#include <QtCore/QLocale>
#include <QtCore/QStringList>

#include <vector>

namespace HovletsTool {

/// How far the translation of a package's texts into one language is.
struct TranslationStatus
{
    int done = 0; ///< texts with a finished translation
    int unfinished = 0; ///< texts without one
    int stale = 0; ///< translations of texts that the content no longer has
    bool isReleased = true; ///< whether popups show all finished translations

    [[nodiscard]] bool isComplete() const { return unfinished == 0 && stale == 0 && isReleased; }
};

/*!
 * \brief The translation of a package's texts into one language: the file that translators edit
 * (".ts"), and the one that the library reads (".qm").
 *
 * Qt's programs write both. Functions throw a ToolError if a file cannot be read or written, or is
 * a link or a special file, because those programs would write to its target or wait for ever.
 */
class TranslationFile
{
public:
    /// \param name the first part of the file's name, as the setting HVKeyTranslationName
    /// \param locale the last part, such as "de_DE"
    TranslationFile(const QDir &folder, const QString &name, const QString &locale);

    /// The locales in the names of the files that translators edit in \a folder. A language alone,
    /// such as "fr", is the name of a file that the library uses with HVKeyLanguageFallback.
    [[nodiscard]] static QStringList localesIn(const QDir &folder, const QString &name);

    [[nodiscard]] QString path() const { return m_base + QStringLiteral(".ts"); }
    [[nodiscard]] QString releasedPath() const { return m_base + QStringLiteral(".qm"); }
    [[nodiscard]] bool exists() const;

    /*!
     * Creates the file, or changes it to contain exactly \a texts. Existing translations stay.
     * \param keepsObsolete whether translations of other texts stay in the file, marked as obsolete
     */
    void update(const std::vector<TranslatableText> &texts, const QLocale &source,
                bool keepsObsolete) const;

    /// Writes the file that the library reads.
    void release(bool withUnfinished) const;

    /// Throws a ToolError if one of the files exists and is not from releasePseudo().
    void refuseRealTranslation() const;

    /// Writes the file that the library reads, with translations made from the texts.
    void releasePseudo(const std::vector<TranslatableText> &texts, int expansion) const;

    [[nodiscard]] TranslationStatus status(const std::vector<TranslatableText> &texts) const;

private:
    void refuseSpecialFiles() const;

    QString m_locale;
    QString m_base; // the path without suffix
};

} // namespace HovletsTool
