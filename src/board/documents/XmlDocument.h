#pragma once

#include <cstddef>
#include <pugixml.hpp>
#include <string>
#include <vector>

/// A parsed XML document in UTF-8 that knows where in the file its elements stand.
class XmlDocument {
public:
    /// Throws ConfigError when `text`, read from `path`, is not one well-formed document.
    XmlDocument(const std::string& path, std::string text);
    XmlDocument(const XmlDocument&) = delete;
    XmlDocument& operator=(const XmlDocument&) = delete;

    const std::string& path() const { return m_Path; }
    pugi::xml_node root() const { return m_Root; }

    /// The line a node or an attribute of the document as it was read stands in, from 1; 0 for a
    /// node that was added.
    int line(const pugi::xml_node& node) const { return line(node.offset_debug()); }
    int line(const pugi::xml_node& element, const pugi::xml_attribute& attribute) const;

    /// Of a document type declaration; 0 when there is none.
    int doctypeLine() const;

    /// The document as text: everything but blanks between elements is as it was read.
    std::string text() const;

private:
    int line(std::ptrdiff_t offset) const;
    [[noreturn]] void fail(std::ptrdiff_t offset, const std::string& cause) const;

    std::string m_Path;
    std::vector<std::ptrdiff_t> m_LineEnds;
    std::string m_Text; // what the names and values of the tree lie in
    pugi::xml_document m_Tree;
    pugi::xml_node m_Root;
};
