// SPDX-License-Identifier: Apache-2.0
#include "EntryTree.h"

#include <HVXmlElement.h>

namespace HovletsTool {

using Hovlets::HVXmlElement;

HVXmlElement *buildElement(const XmlDocument::Element &element, HVXmlElement *parent)
{
    auto *built = new HVXmlElement(parent);
    built->setTagName(element.name);
    for (const XmlDocument::Attribute &attribute : element.attributes)
        built->setAttribute(attribute.name, attribute.value);
    return built;
}

std::unique_ptr<HVXmlElement> buildTree(const XmlDocument::Branch &entry)
{
    std::vector<HVXmlElement *> open; // by level; the entry is below the root
    for (const XmlDocument::Element &element : entry.elements) {
        open.resize(static_cast<size_t>(element.level - 1));
        open.push_back(buildElement(element, open.empty() ? nullptr : open.back()));
        open.back()->setContent(element.text);
    }
    return std::unique_ptr<HVXmlElement>(open.front());
}

} // namespace HovletsTool
