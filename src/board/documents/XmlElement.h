#pragma once

#include "board/documents/XmlDocument.h"
#include "board/documents/schema/Schema.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// An element of a document, which it keeps alive. The conversions throw ConfigError with the
/// file and the attribute's line, or the element's when the attribute is missing.
class XmlElement {
public:
    static constexpr char ITEM[] = "item";

    /// The root of the document in the file, which is looked up as a path of the board.
    static XmlElement readRoot(const std::string& fileName);
    explicit XmlElement(const std::shared_ptr<XmlDocument>& document);

    std::string name() const { return m_Node.name(); }
    bool isRoot() const { return m_Node == m_Document->root(); }

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

    /// The child elements in document order: those of the name, those of the name in the first
    /// child of a section's name, or all.
    std::vector<XmlElement> children(const std::string& name) const;
    std::vector<XmlElement> children(const std::string& section, const std::string& name) const;
    std::vector<XmlElement> children() const;

    /// The same for each in turn, after `begin` has been called with their number.
    template <typename Begin, typename Each>
    void forEachChild(const std::string& name, Begin begin, Each each) const {
        const std::vector<pugi::xml_node> nodes = childNodes(name);
        begin(nodes.size());
        for (const pugi::xml_node& node : nodes) {
            each(XmlElement(m_Document, node));
        }
    }

    /// Adds a child element behind the last.
    XmlElement append(const std::string& name);

    /// Converts an attribute: true, or false with `out` unchanged when there is none. It throws,
    /// again with `out` unchanged, when the attribute does not convert whole or stands twice.
    bool read(const std::string& name, int& out) const { return read(name, out, ANY); }
    bool read(const std::string& name, bool& out) const;
    bool read(const std::string& name, std::string& out) const;

    /// Converts an attribute as its schema says; one that is not there has the schema's value. Also
    /// throws when a required one is missing, or a required text is empty.
    int number(const FieldSchema& field) const;
    bool flag(const FieldSchema& field) const;
    std::string text(const FieldSchema& field) const;
    int choice(const FieldSchema& field) const;

    /// As number(); empty where that would throw.
    std::optional<int> numberIfGood(const FieldSchema& field) const;

    /// Replaces or adds an attribute.
    void write(const std::string& name, int value);
    void write(const std::string& name, bool value);

    /// Throws a ConfigError about this element: "<file>:<line>: <element>: <cause>".
    [[noreturn]] void fail(const std::string& cause) const;

private:
    XmlElement(const std::shared_ptr<XmlDocument>& document, const pugi::xml_node& node)
        : m_Document(document), m_Node(node) {}

    std::vector<pugi::xml_node> childNodes(const std::string& name) const;
    bool read(const std::string& name, int& out, Range range) const;
    pugi::xml_attribute find(const std::string& name) const;
    pugi::xml_attribute find(const FieldSchema& field) const;
    [[noreturn]] void fail(const pugi::xml_attribute& attribute, const std::string& cause) const;
    [[noreturn]] void failConversion(const pugi::xml_attribute& attribute,
                                     const std::string& wanted) const;
    pugi::xml_attribute attributeForWriting(const std::string& name);

    std::shared_ptr<XmlDocument> m_Document;
    pugi::xml_node m_Node;
};
