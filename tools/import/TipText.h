// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <vector>

namespace HovletsTool {

/// A paragraph of a tip.
struct TipParagraph
{
    QString plain; // without markup, with white space reduced to single spaces
    QString markup; // for a control file; empty if the plain text is the same
};

/// The paragraphs of plain or rich text that have visible text. Keeps bold and italic words, links,
/// line breaks and lists, whose items are one paragraph. Reads at most 1,000 tags and 65,536
/// characters of rich text, and no files.
[[nodiscard]] std::vector<TipParagraph> paragraphsOf(const QString &text);

/// The text without markup and pictures, with white space reduced to single spaces.
[[nodiscard]] QString plainText(const QString &text);

/// What a control shows, without its mnemonic and the dots or the colon at its end.
[[nodiscard]] QString plainLabel(const QString &text);

/// Whether a text is short enough for a title, and is not several sentences.
[[nodiscard]] bool isTitle(const QString &plain);

} // namespace HovletsTool
