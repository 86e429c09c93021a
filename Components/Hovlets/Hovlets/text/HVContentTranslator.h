// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVFileBytes.h"

#include <QtCore/QByteArray>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QTranslator>

#include <functional>
#include <optional>

class HVContext;

namespace Hovlets {

/*!
 * \brief Translates texts of content with the translation file of its package.
 *
 * Keeps the bytes of the last file in memory, so the file may be rewritten while it is in use. The
 * translator is never installed in the application and therefore does not affect the host's own
 * translations. GUI thread only.
 */
class HVContentTranslator
{
    Q_DISABLE_COPY_MOVE(HVContentTranslator)

public:
    /*!
     * \param owner becomes the parent of the translator and may delete it
     * \param warn receives a message about a skipped file, once per file
     */
    HVContentTranslator(QObject *owner, std::function<void(const QString &)> warn);
    ~HVContentTranslator();

    /// Call when content is shown: the next translation checks whether its file has changed.
    void contentShown();

    /*!
     * The translation of \a text in \a context from \a file.
     *
     * Returns \a text itself if there is no usable file, and an empty string if the file lacks the
     * text. Content relies on the difference. Each call looks for the file, but re-reads a skipped
     * one only if its status has changed or content was shown. A translation longer
     * than four times HVLimits::shownCharacters is cut there.
     */
    QString translate(const QString &file, const QString &text, const QString &context);

    /// Like translate(), but without a usable file returns no value.
    std::optional<QString> find(const QString &file, const QString &text, const QString &context);

private:
    bool isCurrent(const QString &file);
    bool load(const QString &file);
    bool skip(const QString &file, const QString &problem);

    QObject *m_owner;
    std::function<void(const QString &)> m_warn;
    QPointer<QTranslator> m_translator; // null until the first use
    QByteArray m_bytes; // the translator reads them
    QString m_file; // source of m_bytes; null if none is loaded
    HVFileStatus m_status; // of the file that was loaded or skipped last
    QString m_skipped; // the last file that could not be used
    bool m_mayHaveChanged = true;
};

/// The names of translation files under the current settings, such as "Hovlets_de_DE.qm", for
/// content that was \a written in a locale: see translationLocaleNames().
QStringList translationFileNames(const HVContext &settings, const QString &written);

} // namespace Hovlets
