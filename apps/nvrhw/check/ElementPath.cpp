#include "ElementPath.h"

#include "board/documents/ConfigError.h"

namespace {

std::optional<int> readNumber(const XmlElement& element, const std::string& attribute,
                              std::optional<int> missing, XmlElement::Range range) {
    int value = 0;
    try {
        return element.read(attribute, value, range) ? value : missing;
    } catch (const ConfigError&) {
        return std::nullopt;
    }
}

} // namespace

std::vector<XmlElement> ElementPath::childrenOf(const XmlElement& parent, const char* section,
                                                const char* name) {
    const std::vector<XmlElement> sections = parent.children(section);
    return sections.empty() ? sections : sections.front().children(name);
}

std::optional<int> ElementPath::numberOf(const XmlElement& element, const std::string& attribute) {
    return readNumber(element, attribute, 0, {});
}

std::optional<int> ElementPath::numberOf(const XmlElement& parent, const char* section,
                                         const std::string& attribute) {
    const std::vector<XmlElement> sections = parent.children(section);
    return sections.empty() ? std::nullopt : numberOf(sections.front(), attribute);
}

std::optional<int> ElementPath::writtenNumberOf(const XmlElement& element,
                                                const std::string& attribute,
                                                XmlElement::Range range) {
    return readNumber(element, attribute, std::nullopt, range);
}
