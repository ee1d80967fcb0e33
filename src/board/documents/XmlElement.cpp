#include "board/documents/XmlElement.h"

#include "board/documents/ConfigError.h"
#include "board/documents/TextFile.h"
#include "platform/FixedText.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <utility>

namespace {

constexpr std::size_t FEW = 16; // elements of a name, as most lists have

/// A value for a message: not endless, and on one line.
std::string shown(const char* value) {
    FixedText<64> text;
    text.set(value);
    std::string result = text.get();
    std::replace_if(
        result.begin(), result.end(), [](unsigned char c) { return c < ' '; }, '?');
    return '"' + result + '"';
}

bool isElement(const pugi::xml_node& node) { return node.type() == pugi::node_element; }

} // namespace

XmlElement XmlElement::readRoot(const std::string& fileName) {
    const std::string path = GlobalEnv::getInstance()->resolve(fileName);
    return XmlElement(std::make_shared<XmlDocument>(path, TextFile::read(path)));
}

XmlElement::XmlElement(const std::shared_ptr<XmlDocument>& document)
    : XmlElement(document, document->root()) {}

std::string XmlElement::subject() const {
    return name() == ITEM ? m_Node.parent().name() + (": " + name()) : name();
}

std::vector<XmlElement::Attribute> XmlElement::attributes() const {
    std::vector<Attribute> attributes;
    for (const pugi::xml_attribute& attribute : m_Node.attributes()) {
        attributes.push_back({attribute.name(), m_Document->line(m_Node, attribute)});
    }
    return attributes;
}

int XmlElement::textLine() const {
    for (const pugi::xml_node& node : m_Node.children()) {
        if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) {
            const std::string text = node.value(); // with the blank space before it
            const std::string blanks = text.substr(0, text.find_first_not_of(" \t\n"));
            return m_Document->line(node) +
                   static_cast<int>(std::count(blanks.begin(), blanks.end(), '\n'));
        }
    }
    return 0;
}

XmlElement XmlElement::child(const std::string& name) const {
    pugi::xml_node node = m_Node.child(name.c_str());
    while (node && !isElement(node)) {
        node = node.next_sibling(name.c_str());
    }
    if (!node) {
        throw ConfigError(file(), line(), m_Node.name() + (" has no element " + name));
    }
    return {m_Document, node};
}

// Walked once: in a large document that is what takes the time.
std::vector<pugi::xml_node> XmlElement::childNodes(const std::string& name) const {
    std::vector<pugi::xml_node> nodes;
    nodes.reserve(FEW);
    for (pugi::xml_node node = m_Node.child(name.c_str()); node;
         node = node.next_sibling(name.c_str())) {
        if (isElement(node)) {
            nodes.push_back(node);
        }
    }
    return nodes;
}

std::vector<XmlElement> XmlElement::children(const std::string& name) const {
    std::vector<XmlElement> elements;
    forEachChild(
        name, [&](std::size_t count) { elements.reserve(count); },
        [&](XmlElement element) { elements.push_back(std::move(element)); });
    return elements;
}

std::vector<XmlElement> XmlElement::children(const std::string& section,
                                             const std::string& name) const {
    const std::vector<XmlElement> sections = children(section);
    return sections.empty() ? sections : sections.front().children(name);
}

std::vector<XmlElement> XmlElement::children() const {
    std::vector<XmlElement> elements;
    for (const pugi::xml_node& node : m_Node.children()) {
        if (isElement(node)) {
            elements.push_back({m_Document, node});
        }
    }
    return elements;
}

XmlElement XmlElement::append(const std::string& name) {
    return {m_Document, m_Node.append_child(name.c_str())};
}

pugi::xml_attribute XmlElement::find(const std::string& name) const {
    const pugi::xml_attribute found = m_Node.attribute(name.c_str());
    for (pugi::xml_attribute next = found.next_attribute(); next; next = next.next_attribute()) {
        if (std::strcmp(name.c_str(), next.name()) == 0) {
            fail(next, "attribute " + name + " stands twice");
        }
    }
    return found;
}

pugi::xml_attribute XmlElement::find(const FieldSchema& field) const {
    const pugi::xml_attribute found = find(field.name);
    if (!found && field.presence == FieldSchema::REQUIRED) {
        fail(std::string("attribute ") + field.name + " is missing");
    }
    return found;
}

bool XmlElement::read(const std::string& name, int& out, Range range) const {
    const pugi::xml_attribute attribute = find(name);
    if (!attribute) {
        return false;
    }
    const char* const begin = attribute.value();
    const char* const end = begin + std::strlen(begin);
    int value = 0;
    const std::from_chars_result result = std::from_chars(begin, end, value);
    if (result.ec != std::errc() || result.ptr != end || !range.has(value)) {
        failConversion(attribute, "a whole number from " + std::to_string(range.lowest) + " to " +
                                      std::to_string(range.highest));
    }
    out = value;
    return true;
}

bool XmlElement::read(const std::string& name, bool& out) const {
    const pugi::xml_attribute attribute = find(name);
    if (!attribute) {
        return false;
    }
    const std::string value = attribute.value();
    const bool isTrue = value == "true" || value == "1";
    if (!isTrue && value != "false" && value != "0") {
        failConversion(attribute, "true, false, 1 or 0");
    }
    out = isTrue;
    return true;
}

bool XmlElement::read(const std::string& name, std::string& out) const {
    const pugi::xml_attribute attribute = find(name);
    if (attribute) {
        out = attribute.value();
    }
    return !attribute.empty();
}

int XmlElement::number(const FieldSchema& field) const {
    find(field);
    int value = field.absent;
    read(field.name, value, field.accepted);
    return value;
}

bool XmlElement::flag(const FieldSchema& field) const {
    find(field);
    bool value = field.absent != 0;
    read(field.name, value);
    return value;
}

std::string XmlElement::text(const FieldSchema& field) const {
    const pugi::xml_attribute attribute = find(field);
    std::string value = attribute.value(); // empty also when there is none
    if (value.empty() && field.presence == FieldSchema::REQUIRED) {
        fail(attribute, std::string("attribute ") + field.name + " is empty");
    }
    return value;
}

int XmlElement::choice(const FieldSchema& field) const {
    const pugi::xml_attribute attribute = find(field);
    if (!attribute) {
        return field.absent;
    }
    const std::string value = attribute.value();
    std::string wanted;
    int place = 0;
    for (const char* known : field.choices) {
        const bool isLast = static_cast<std::size_t>(++place) == field.choices.size();
        if (value == known) {
            return place;
        }
        wanted += place == 1 ? "" : isLast ? " or " : ", ";
        wanted += known;
    }
    failConversion(attribute, wanted);
}

std::optional<int> XmlElement::numberIfGood(const FieldSchema& field) const {
    try {
        return number(field);
    } catch (const ConfigError&) {
        return std::nullopt;
    }
}

pugi::xml_attribute XmlElement::attributeForWriting(const std::string& name) {
    const pugi::xml_attribute found = find(name);
    return found ? found : m_Node.append_attribute(name.c_str());
}

void XmlElement::write(const std::string& name, int value) {
    attributeForWriting(name).set_value(value);
}

void XmlElement::write(const std::string& name, bool value) {
    attributeForWriting(name).set_value(value);
}

void XmlElement::failConversion(const pugi::xml_attribute& attribute,
                                const std::string& wanted) const {
    fail(attribute, std::string("attribute ") + attribute.name() + " must be " + wanted + ", not " +
                        shown(attribute.value()));
}

void XmlElement::fail(const pugi::xml_attribute& attribute, const std::string& cause) const {
    throw ConfigError(Cause{cause, file(), m_Document->line(m_Node, attribute)}, subject());
}

void XmlElement::fail(const std::string& cause) const {
    throw ConfigError(Cause{cause, file(), line()}, subject());
}
