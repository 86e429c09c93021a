// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XmlDocument.h"

#include <memory>

namespace Hovlets {
class HVXmlElement;
}

namespace HovletsTool {

/// Builds an element as the library's parser does, but without text and children. A \a parent owns
/// it.
[[nodiscard]] Hovlets::HVXmlElement *buildElement(const XmlDocument::Element &element,
                                                  Hovlets::HVXmlElement *parent = nullptr);

/// Builds an entry with all its texts and elements.
[[nodiscard]] std::unique_ptr<Hovlets::HVXmlElement> buildTree(const XmlDocument::Branch &entry);

} // namespace HovletsTool
