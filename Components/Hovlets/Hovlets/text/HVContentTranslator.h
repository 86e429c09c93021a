// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QTranslator>

class HVContext;

namespace Hovlets {

/*!
 * \brief Translates texts of content with the translation file of its package.
 *
 * It keeps the last file that it read. The translator is never installed in the application, so the
 * host's own translations are unaffected. GUI thread only.
 */
class HVContentTranslator
{
    Q_DISABLE_COPY_MOVE(HVContentTranslator)

public:
    /// Its translator becomes a child of \a owner, and may be deleted with it.
    explicit HVContentTranslator(QObject *owner);
    ~HVContentTranslator();

    /*!
     * The translation of \a text in \a context by \a file.
     *
     * Returns \a text itself if there is no such file, and looks for it again at the next call.
     * Returns an empty string if the file lacks the text. Content relies on the difference.
     */
    QString translate(const QString &file, const QString &text, const QString &context);

private:
    QObject *m_owner;
    QPointer<QTranslator> m_translator; // null until the first use
    QString m_file; // null while none is loaded
};

/// The name of the translation files that the settings ask for, such as "Hovlets_de_DE.qm".
QString translationFileName(const HVContext &settings);

} // namespace Hovlets
