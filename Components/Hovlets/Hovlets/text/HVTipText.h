// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace Hovlets {

/*!
 * \brief The paragraphs of a control's own tooltip, status tip or What's This, as the content of
 * <p> elements.
 *
 * Tips are written for Qt's rich text, which knows more tags than content may use. The markup of
 * content remains. Other tags are removed instead of shown: those of blocks end a paragraph, and
 * style sheets go with their text. Paragraphs that no popup would show are left out. The result is
 * as untrusted as the tip: show it as content.
 *
 * \param tip the text; of a plain one, each line end is kept
 * \param isRich whether Qt shows it as rich text
 */
QStringList tipParagraphs(const QString &tip, bool isRich);

/// Whether a plain tip is short enough for a title: one line.
bool isTipTitle(const QString &tip);

} // namespace Hovlets
