// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVFileBytes.h"

#include <QtCore/QByteArray>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QTranslator>

#include <functional>

class HVContext;

namespace Hovlets {

/*!
 * \brief Translates texts of content with the translation file of its package.
 *
 * It keeps the bytes of the last file that it read, so the file may be rewritten while it is in
 * use. The translator is never installed in the application, so the host's own translations are
 * unaffected. GUI thread only.
 */
class HVContentTranslator
{
    Q_DISABLE_COPY_MOVE(HVContentTranslator)

public:
    /*!
     * \param owner becomes the parent of the translator, which may be deleted with it
     * \param warn takes a message about a file that is skipped, once per file
     */
    HVContentTranslator(QObject *owner, std::function<void(const QString &)> warn);
    ~HVContentTranslator();

    /// Content is shown: the next translation looks whether its file has changed.
    void contentShown();

    /*!
     * The translation of \a text in \a context by \a file.
     *
     * Returns \a text itself if there is no usable file, and looks for it again at the next call.
     * Returns an empty string if the file lacks the text. Content relies on the difference.
     */
    QString translate(const QString &file, const QString &text, const QString &context);

private:
    bool isCurrent(const QString &file);
    bool load(const QString &file);
    bool skip(const QString &file, const QString &problem);

    QObject *m_owner;
    std::function<void(const QString &)> m_warn;
    QPointer<QTranslator> m_translator; // null until the first use
    QByteArray m_bytes; // that the translator reads
    QString m_file; // that they are from; null while none is loaded
    HVFileStatus m_status; // of the file, loaded or skipped
    QString m_skipped; // the last file that could not be used
    bool m_mayHaveChanged = true;
};

/// The name of the translation files that the settings ask for, such as "Hovlets_de_DE.qm".
QString translationFileName(const HVContext &settings);

} // namespace Hovlets
