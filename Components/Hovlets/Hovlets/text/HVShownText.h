// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVDisplayBudget.h"
#include "HVTextRuns.h"

#include <QtCore/QString>

namespace Hovlets {

/// A text as a Qt Quick text item shows it.
struct HVShownText
{
    /// Plain text, the lightweight markup of StyledText, or that of RichText.
    enum class Format { Plain, Styled, Rich };

    QString text;
    QString spoken; ///< Only the words, for screen readers.
    Format format = Format::Plain;
    bool isCut = false; ///< Whether the budget was spent; the text then ends with an ellipsis.
};

/*!
 * \brief Writes untrusted text in a form that text items lay out quickly.
 *
 * Time and memory are linear in the input:
 * - Characters that Qt's text documents use for objects and frames, and lone surrogates, become
 *   U+FFFD.
 * - A word of hundreds of letters gets zero-width spaces where it may break, because Qt measures
 *   the whole rest of a word for each of its lines.
 * - A letter in another script or direction than the one before counts as eight.
 * - A letter keeps its first 30 marks, such as accents.
 * - Where the budget ends, the text ends with "…", and nothing more is written.
 */
class HVShownTextWriter
{
public:
    /// With \a escapes, escapes the characters that markup would interpret.
    HVShownTextWriter(HVDisplayBudget &budget, bool escapes);

    /// Returns false once the text is cut.
    bool write(QStringView text);

    /// Adds safe markup, which is shown but not spoken.
    void writeMarkup(const QString &markup) { m_shown.text += markup; }

    /// Selects how often each of the next characters counts; 1 by default.
    void setCost(int cost) { m_cost = cost; }

    /// Adds a character entity that only the text item can resolve.
    void writeEntity(QStringView name);

    /// Ends the current word. Call it for tags that start a line or a block.
    void endWord();

    /// Call it after the last character. Cuts the text if the budget contained only its start.
    void endText();

    /// Ends the text with an ellipsis.
    void cut();
    [[nodiscard]] bool isCut() const { return m_shown.isCut; }

    HVShownText take(HVShownText::Format format);

private:
    bool writeCharacter(QStringView character);
    bool isMarkTooMany(QStringView character);
    void append(QChar c);
    void breakLongWord(QChar next);

    HVDisplayBudget &m_budget;
    HVShownText m_shown;
    bool m_escapes;
    int m_cost = 1;
    int m_wordLength = 0;
    int m_marks = 0; // on the current letter
    HVTextRuns m_runs;
};

/// Converts \a text to plain text within \a budget.
HVShownText shownPlainText(const QString &text, HVDisplayBudget &budget);

/*!
 * Appends \a more to \a text, with each run of white space reduced to one space, and removed at the
 * start. Stops reading once \a text has more than \a most characters. A no-break space does not
 * count as white space here.
 */
void appendSimplified(QString &text, QStringView more, int most);

/// \a text with its white space reduced in the same way, and removed at the end.
QString simplifiedText(QStringView text, int most);

} // namespace Hovlets
