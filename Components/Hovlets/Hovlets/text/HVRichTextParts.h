// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVShownText.h"

#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief Joins shown texts to one, such as a list of its items.
 *
 * The texts are within a budget already, and their markup is harmless. Every element that is begun
 * must be ended.
 */
class HVRichTextParts
{
public:
    /// Begins an element of rich text, such as "li".
    void begin(const char *tag);
    void end(const char *tag);

    /// Appends a text. Plain text is escaped.
    void append(const HVShownText &text);

    /// Appends what screen readers read between two parts.
    void separate(const char *separator);

    [[nodiscard]] bool isEmpty() const { return m_joined.spoken.isEmpty(); }

    HVShownText take();

private:
    HVShownText m_joined;
};

} // namespace Hovlets
