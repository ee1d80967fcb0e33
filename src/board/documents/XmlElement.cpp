#include "board/documents/XmlElement.h"

#include "board/documents/ConfigError.h"
#include "board/documents/TextFile.h"
#include "platform/FixedText.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace {

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
    for (const pugi::xml_node& node : m_Node.children(name.c_str())) {
        if (isElement(node)) {
            return {m_Document, node};
        }
    }
    throw ConfigError(file(), line(), "", m_Node.name() + (" has no element " + name));
}

std::vector<XmlElement> XmlElement::children(const std::string& name) const {
    std::vector<XmlElement> elements = children();
    elements.erase(
        std::remove_if(elements.begin(), elements.end(),
                       [&](const XmlElement& element) { return element.name() != name; }),
        elements.end());
    return elements;
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
        if (name == next.name()) {
            fail("attribute " + name + " stands twice");
        }
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
    if (result.ec != std::errc() || result.ptr != end || value < range.lowest ||
        value > range.highest) {
        const std::string wanted = "a whole number from " + std::to_string(range.lowest) + " to " +
                                   std::to_string(range.highest);
        failConversion(name, wanted.c_str(), begin);
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
        failConversion(name, "true, false, 1 or 0", value.c_str());
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

bool XmlElement::read(const std::string& name, const std::vector<std::string>& choices,
                      int& out) const {
    std::string value;
    if (!read(name, value)) {
        return false;
    }
    const auto found = std::find(choices.begin(), choices.end(), value);
    if (found == choices.end()) {
        std::string wanted;
        for (const std::string& choice : choices) {
            wanted += wanted.empty() ? "" : &choice == &choices.back() ? " or " : ", ";
            wanted += choice;
        }
        failConversion(name, wanted.c_str(), value.c_str());
    }
    out = static_cast<int>(found - choices.begin());
    return true;
}

int XmlElement::require(const std::string& name, Range range) const {
    int value = 0;
    if (!read(name, value, range)) {
        fail("attribute " + name + " is missing");
    }
    return value;
}

std::string XmlElement::requireText(const std::string& name) const {
    std::string value;
    if (!read(name, value)) {
        fail("attribute " + name + " is missing");
    }
    if (value.empty()) {
        fail("attribute " + name + " is empty");
    }
    return value;
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

void XmlElement::failConversion(const std::string& name, const char* wanted,
                                const char* found) const {
    fail("attribute " + name + " must be " + wanted + ", not " + shown(found));
}

void XmlElement::fail(const std::string& cause) const {
    throw ConfigError(file(), line(), subject(), cause);
}
