#pragma once

#include "board/documents/XmlElement.h"

#include <optional>
#include <string>
#include <vector>

/// Finds elements and numbers as the readers do: of several sections of one name the first, and 0
/// for an attribute that is missing.
class ElementPath {
public:
    ElementPath() = delete;

    /// The children of this name in a section below `parent`; none when there is no section.
    static std::vector<XmlElement> childrenOf(const XmlElement& parent, const char* section,
                                              const char* name);
    static std::vector<XmlElement> itemsOf(const XmlElement& parent, const char* section) {
        return childrenOf(parent, section, XmlElement::ITEM);
    }

    /// Empty when the attribute does not convert, which the walk over the document reports.
    static std::optional<int> numberOf(const XmlElement& element, const std::string& attribute);

    /// The same for a section below `parent`; empty also when there is none.
    static std::optional<int> numberOf(const XmlElement& parent, const char* section,
                                       const std::string& attribute);

    /// As the first, but empty also when the attribute is missing or out of range.
    static std::optional<int> writtenNumberOf(const XmlElement& element,
                                              const std::string& attribute,
                                              XmlElement::Range range = {});
};
