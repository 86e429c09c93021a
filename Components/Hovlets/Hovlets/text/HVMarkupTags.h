// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <optional>

namespace Hovlets {

/// The tags that may be markup in a text. All others are shown as they are written.
enum class HVMarkupTag {
    A,
    B,
    Big,
    Br,
    Code,
    Em,
    Font,
    I,
    Kbd,
    Li,
    Ol,
    P,
    S,
    Samp,
    Small,
    Span,
    Strong,
    Sub,
    Sup,
    Tt,
    U,
    Ul
};

constexpr int MarkupTagCount = int(HVMarkupTag::Ul) + 1;

/// The tag of that name, upper and lower case alike.
std::optional<HVMarkupTag> markupTagNamed(QStringView name);
QLatin1String markupTagName(HVMarkupTag tag);

/// Whether it marks words in a paragraph rather than making a block or a line.
bool marksWords(HVMarkupTag tag);

/// Whether Qt's light-weight StyledText shows it as RichText does.
bool isStyledTextTag(HVMarkupTag tag);

/*!
 * \a raw, what a start tag holds behind its name, with the attributes that are known to be harmless
 * alone, each after a space: colours, text decoration, sizes within reason. Nothing in the result
 * names a file, an address or a font. The address of a link is not among them: see
 * markupAttribute().
 */
QString harmlessAttributes(HVMarkupTag tag, QStringView raw);

/// The value of an attribute as it is written, without its quotes; null when it is absent.
QString markupAttribute(QStringView raw, QLatin1String name);

} // namespace Hovlets
