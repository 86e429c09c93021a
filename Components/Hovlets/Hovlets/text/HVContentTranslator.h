// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

class HVContext;
class QObject;
class QTranslator;

namespace Hovlets {

class HVView;

/*!
 * \brief Translates texts of content with the translation file of its package.
 *
 * It keeps the file that it read last. The host's own translations are not touched: the translator
 * is never installed in the application.
 */
class HVContentTranslator
{
public:
    /// Its translator becomes a child of \a owner.
    explicit HVContentTranslator(QObject *owner);

    /*!
     * The translation of \a text in \a context by \a file.
     *
     * \a text itself without such a file, which is looked for again at the next call; an empty
     * string when the file lacks the text. Content relies on the difference.
     */
    QString translate(const QString &file, const QString &text, const QString &context);

private:
    QObject *m_owner;
    QTranslator *m_translator = nullptr; // made at first use, the owner's
    QString m_file; // null while none is loaded
};

/// Where the package of the content in \a view has its translations for the current locale.
QString translationFile(const HVView &view, const HVContext &context);

} // namespace Hovlets
