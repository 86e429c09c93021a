// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

#include <optional>

namespace HovletsTool {

/// The offsets of an attribute in the bytes of a file.
struct AttributePlace
{
    int name = 0;
    int valueBegin = 0; // after the opening quotation mark
    int valueEnd = 0; // at the closing quotation mark
};

/// Finds the attribute \a name in the start tag whose "<" is at \a offset. An entity can spell a
/// tag in a way that this does not find.
[[nodiscard]] std::optional<AttributePlace> findAttribute(const QByteArray &bytes, int offset,
                                                          const QByteArray &name);

} // namespace HovletsTool
