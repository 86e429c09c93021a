// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <memory>

class QTranslator;

namespace Hovlets {

/*!
 * \brief Translates texts of content with the translation file of its package.
 *
 * It keeps the file that it read last. The host's own translations are not touched: the translator
 * is never installed in the application.
 */
class HVContentTranslator
{
public:
    HVContentTranslator();
    ~HVContentTranslator();

    /*!
     * The translation of \a text in \a context by \a file.
     *
     * \a text itself without such a file, which is looked for again at the next call; an empty
     * string when the file lacks the text. Content relies on the difference.
     */
    QString translate(const QString &file, const QString &text, const QString &context);

private:
    std::unique_ptr<QTranslator> m_translator; // made at first use
    QString m_file; // null while none is loaded
};

} // namespace Hovlets
