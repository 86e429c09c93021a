// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <optional>

namespace Hovlets {

/// The tags that count as markup in a text. All others are shown as they are written.
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

/// The tag with that name, regardless of case.
std::optional<HVMarkupTag> markupTagNamed(QStringView name);
QLatin1String markupTagName(HVMarkupTag tag);

/// Whether the tag marks words in a paragraph instead of starting a block or a line.
bool marksWords(HVMarkupTag tag);

/// Whether Qt's lightweight StyledText shows the tag in the same way as RichText.
bool isStyledTextTag(HVMarkupTag tag);

/*!
 * The harmless attributes in \a raw, the part of a start tag after its name, each after a space:
 * colours, text decoration, sizes within limits. Nothing in the result names a file, an address or
 * a font. No attribute is longer than 1,024 characters, and no style declares a property twice. The
 * address of a link is not included: see markupAttribute().
 */
QString harmlessAttributes(HVMarkupTag tag, QStringView raw);

/// The text size in the style of an element with these harmless attributes, in points or pixels; 0
/// if there is none.
int styledTextSize(const QString &attributes);

/// The value of an attribute as it is written, without quotes; null if it is absent.
QString markupAttribute(QStringView raw, QLatin1String name);

} // namespace Hovlets
