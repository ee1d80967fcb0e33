#include "board/documents/XmlDocument.h"

#include "board/documents/ConfigError.h"

#include <algorithm>
#include <utility>

namespace {

/// Collects what pugixml writes.
class TextWriter : public pugi::xml_writer {
public:
    explicit TextWriter(std::string& text) : m_Text(text) {}
    void write(const void* data, std::size_t size) override {
        m_Text.append(static_cast<const char*>(data), size);
    }

private:
    std::string& m_Text;
};

/// Where the text refers to the zero character, which XML does not know and which would cut off the
/// value it stands in; npos when nowhere.
std::size_t findZeroReference(const std::string& text) {
    for (auto at = text.find("&#"); at != std::string::npos; at = text.find("&#", at + 1)) {
        const std::size_t digits = at + 2 + (text.compare(at + 2, 1, "x") == 0 ? 1 : 0);
        const std::size_t end = text.find_first_not_of('0', digits);
        if (end != std::string::npos && end > digits && text[end] == ';') {
            return at;
        }
    }
    return std::string::npos;
}

bool isElement(const pugi::xml_node& node) { return node.type() == pugi::node_element; }

} // namespace

XmlDocument::XmlDocument(const std::string& path, std::string text)
    : m_Path(path), m_Text(std::move(text)) {
    for (std::size_t i = m_Text.find('\n'); i != m_Text.npos; i = m_Text.find('\n', i + 1)) {
        m_LineEnds.push_back(static_cast<std::ptrdiff_t>(i));
    }
    const std::size_t zero = findZeroReference(m_Text);
    if (zero != std::string::npos) {
        fail(static_cast<std::ptrdiff_t>(zero), "a reference to the zero character");
    }
    const pugi::xml_parse_result result =
        m_Tree.load_buffer_inplace(m_Text.data(), m_Text.size(), pugi::parse_full);
    if (!result) {
        fail(result.offset, result.description());
    }
    if (result.encoding != pugi::encoding_utf8) {
        fail(0, "the encoding is not UTF-8");
    }
    m_Root = m_Tree.document_element();
    for (pugi::xml_node node = m_Root.next_sibling(); node; node = node.next_sibling()) {
        if (isElement(node)) {
            fail(node.offset_debug(), std::string("a second root element ") + node.name());
        }
    }
}

void XmlDocument::fail(std::ptrdiff_t offset, const std::string& cause) const {
    throw ConfigError(m_Path, line(offset), cause);
}

int XmlDocument::line(const pugi::xml_node& element, const pugi::xml_attribute& attribute) const {
    // The names of a document as it was read lie in one buffer, and an element's offset is its
    // name's.
    return line(element.offset_debug() + (attribute.name() - element.name()));
}

int XmlDocument::doctypeLine() const {
    for (const pugi::xml_node& node : m_Tree.children()) {
        if (node.type() == pugi::node_doctype) {
            return line(node);
        }
    }
    return 0;
}

int XmlDocument::line(std::ptrdiff_t offset) const {
    if (offset < 0) {
        return 0; // not from the file
    }
    const auto end = std::lower_bound(m_LineEnds.begin(), m_LineEnds.end(), offset);
    return static_cast<int>(end - m_LineEnds.begin()) + 1;
}

std::string XmlDocument::text() const {
    std::string text;
    TextWriter writer(text);
    m_Tree.save(writer, "    ", pugi::format_indent, pugi::encoding_utf8);
    return text;
}
