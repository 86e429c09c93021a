// SPDX-License-Identifier: Apache-2.0
#include "HVRichTextParts.h"

#include <utility>

namespace Hovlets {

void HVRichTextParts::begin(const char *tag)
{
    m_joined.text += QLatin1Char('<') + QLatin1String(tag) + QLatin1Char('>');
}

void HVRichTextParts::end(const char *tag)
{
    m_joined.text += QLatin1String("</") + QLatin1String(tag) + QLatin1Char('>');
}

void HVRichTextParts::append(const HVShownText &text)
{
    const bool isPlain = text.format == HVShownText::Format::Plain;
    m_joined.text += isPlain ? text.text.toHtmlEscaped() : text.text;
    m_joined.spoken += text.spoken;
    m_joined.isCut |= text.isCut;
}

void HVRichTextParts::separate(const char *separator)
{
    if (!isEmpty())
        m_joined.spoken += QLatin1String(separator);
}

HVShownText HVRichTextParts::take()
{
    m_joined.format = HVShownText::Format::Rich;
    return std::exchange(m_joined, {});
}

} // namespace Hovlets
