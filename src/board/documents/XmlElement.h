#pragma once

#include "board/documents/XmlDocument.h"

#include <limits>
#include <memory>
#include <string>
#include <vector>

/// An element of a document, which it keeps alive. The conversions throw ConfigError with the
/// element's file and line.
class XmlElement {
public:
    static constexpr char ITEM[] = "item";

    /// The values an int may have, both ends included.
    struct Range {
        int lowest = std::numeric_limits<int>::min();
        int highest = std::numeric_limits<int>::max();
    };

    /// The root of the document in the file, which is looked up as a path of the board.
    static XmlElement readRoot(const std::string& fileName);
    explicit XmlElement(const std::shared_ptr<XmlDocument>& document);

    std::string name() const { return m_Node.name(); }

    /// Whom a message is about: the name, for an item with the name of the section before it.
    std::string subject() const;

    /// Where it stands: the file, the line of its begin or of one of its attributes.
    const std::string& file() const { return m_Document->path(); }
    int line() const { return m_Document->line(m_Node); }

    struct Attribute {
        std::string name;
        int line;
    };

    /// All attributes in document order; a name may stand twice.
    std::vector<Attribute> attributes() const;

    /// The line of the first text directly in this element, which no reader looks at; 0 when there
    /// is only blank space.
    int textLine() const;

    /// The first child element of this name.
    XmlElement child(const std::string& name) const;

    /// The child elements in document order: those of the name, or all.
    std::vector<XmlElement> children(const std::string& name) const;
    std::vector<XmlElement> children() const;

    /// Adds a child element behind the last.
    XmlElement append(const std::string& name);

    /// Converts an attribute: true, or false with `out` unchanged when there is none. It throws,
    /// again with `out` unchanged, when the attribute does not convert whole or stands twice.
    bool read(const std::string& name, int& out) const { return read(name, out, Range()); }
    bool read(const std::string& name, int& out, Range range) const;
    bool read(const std::string& name, bool& out) const;
    bool read(const std::string& name, std::string& out) const;

    /// Converts an attribute that has one of these texts into the place of the text, from 0.
    bool read(const std::string& name, const std::vector<std::string>& choices, int& out) const;

    /// As read(), for an attribute that must be there. A text must not be empty either.
    int require(const std::string& name, Range range) const;
    std::string requireText(const std::string& name) const;

    /// Replaces or adds an attribute.
    void write(const std::string& name, int value);
    void write(const std::string& name, bool value);

    /// Throws a ConfigError about this element: "<file>:<line>: <element>: <cause>".
    [[noreturn]] void fail(const std::string& cause) const;

private:
    XmlElement(const std::shared_ptr<XmlDocument>& document, const pugi::xml_node& node)
        : m_Document(document), m_Node(node) {}

    pugi::xml_attribute find(const std::string& name) const;
    [[noreturn]] void failConversion(const std::string& name, const char* wanted,
                                     const char* found) const;
    pugi::xml_attribute attributeForWriting(const std::string& name);

    std::shared_ptr<XmlDocument> m_Document;
    pugi::xml_node m_Node;
};
