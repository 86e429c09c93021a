// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

#include <optional>
#include <vector>

namespace HovletsTool {

/// An attribute in the bytes of a file, by its offsets.
struct AttributePlace
{
    int name = 0;
    int nameEnd = 0;
    int valueBegin = 0; // after the opening quotation mark
    int valueEnd = 0; // at the closing quotation mark
};

/// The attributes of the start tag whose "<" is at \a offset, as far as the tag is well-formed. An
/// entity can hold a tag or a part of it that this does not find.
[[nodiscard]] std::vector<AttributePlace> attributesAt(const QByteArray &bytes, int offset);

/// The attribute \a name of the start tag at \a offset.
[[nodiscard]] std::optional<AttributePlace> findAttribute(const QByteArray &bytes, int offset,
                                                          const QByteArray &name);

/// The offset of the ">" that ends the comment, CDATA section or processing instruction at \a
/// offset; the size of the file for one without an end, and no value for anything else.
[[nodiscard]] std::optional<int> endOfSection(const QByteArray &bytes, int offset);

/// The offset of the first start tag with more than \a most attributes.
[[nodiscard]] std::optional<int> findLargeTag(const QByteArray &bytes, size_t most);

} // namespace HovletsTool
