// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVDisplayBudget.h"

#include <QtCore/QString>

namespace Hovlets {

/// A text as a Qt Quick text item shows it.
struct HVShownText
{
    /// Plain text, the light-weight markup of StyledText, or that of RichText.
    enum Format { Plain, Styled, Rich };

    QString text;
    QString spoken; ///< The words alone, for screen readers.
    Format format = Plain;
    bool isCut = false; ///< The budget was spent: it ends with an ellipsis.
};

/*!
 * \brief Writes text that anybody may have written in a form that text items lay out quickly.
 *
 * Time and memory are linear in what is written, whatever it is:
 * - characters that stand for objects and frames in Qt's text documents, and lone surrogates,
 *   become U+FFFD;
 * - a word of hundreds of letters may break at zero-width spaces, as Qt measures the whole rest of
 *   a word for each of its lines;
 * - where the budget ends the text ends with "…", and nothing more is written.
 */
class HVShownTextWriter
{
public:
    /// \a escapes what markup would take for its own, for text among markup.
    HVShownTextWriter(HVDisplayBudget &budget, bool escapes);

    /// False once the text is cut.
    bool write(QStringView text);

    /// Safe markup, which is shown and not spoken.
    void writeMarkup(const QString &markup) { m_shown.text += markup; }

    /// A character entity that only the text item can resolve.
    void writeEntity(QStringView name);

    /// What a tag that makes a line or a block does to the words around it.
    void endWord();

    /// Ends the text with an ellipsis.
    void cut();
    bool isCut() const { return m_shown.isCut; }

    HVShownText take(HVShownText::Format format);

private:
    bool writeCharacter(QStringView character);
    void append(QChar c);
    void breakLongWord(QChar next);

    HVDisplayBudget &m_budget;
    HVShownText m_shown;
    bool m_escapes;
    int m_wordLength = 0;
};

/// \a text as plain text, within \a budget.
HVShownText shownPlainText(const QString &text, HVDisplayBudget &budget);

/*!
 * Appends \a more to \a text with each run of white space reduced to a space, and without one at
 * the start. Stops reading once \a text has more than \a most characters. A no-break space is no
 * white space here.
 */
void appendSimplified(QString &text, QStringView more, int most);

/// \a text with its white space so reduced, also at its end.
QString simplifiedText(QStringView text, int most);

} // namespace Hovlets
