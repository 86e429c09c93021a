// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

#include <optional>

namespace HovletsTool {

/// Where an attribute stands in the bytes of a file.
struct AttributePlace
{
    int name = 0;
    int valueBegin = 0; // behind the quotation mark
    int valueEnd = 0; // of the closing one
};

/// The attribute \a name of the start tag whose "<" is at \a offset, when the tag spells it out.
std::optional<AttributePlace> findAttribute(const QByteArray &bytes, int offset,
                                            const QByteArray &name);

} // namespace HovletsTool
