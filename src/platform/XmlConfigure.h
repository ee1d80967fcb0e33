#pragma once

#include "foundation/SafePointer.h"
#include "platform/base/Allocation.h"
#include "platform/base/Export.h"

#include <memory>
#include <string>
#include <vector>

/// How a document is opened.
enum OPEN_MODE { OPEN_MODE_READ = 1 };

class XmlElement;

/// An unnamed entry of a node: a child element <item .../>. Its properties are its attributes.
class NVRHW_API XmlConfigureItem {
public:
    NVRHW_TRACKED

    ~XmlConfigureItem();

    /// Converts the property into `out`: non-zero on success. 0 with `out` unchanged when there
    /// is no such property, or when it does not convert whole (which is logged): an int is a
    /// decimal number in range, a bool one of true, false, 1 and 0.
    int getProperty(const std::string& name, int& out) const;
    int getProperty(const std::string& name, bool& out) const;
    int getProperty(const std::string& name, std::string& out) const;

private:
    friend class XmlConfigureNode;
    explicit XmlConfigureItem(std::unique_ptr<XmlElement> element);

    std::unique_ptr<XmlElement> m_Element;
};

/// A named element of the document. Nodes and items keep the document they come from alive.
class NVRHW_API XmlConfigureNode {
public:
    NVRHW_TRACKED

    ~XmlConfigureNode();

    /// The first child element of this name: non-zero when found; 0, which is logged, when not.
    int getConfigNode(const std::string& name, SafePointer<XmlConfigureNode>& out) const;

    /// Replaces `out` by all child elements of this name in document order; non-zero, also when
    /// there are none.
    int getConfigNodeList(const std::string& name,
                          std::vector<SafePointer<XmlConfigureNode>>& out) const;

    /// Replaces `out` by the node's items in document order; non-zero, also when there are none.
    int getItemList(std::vector<SafePointer<XmlConfigureItem>>& out) const;

    /// As XmlConfigureItem::getProperty().
    int getProperty(const std::string& name, int& out) const;
    int getProperty(const std::string& name, bool& out) const;
    int getProperty(const std::string& name, std::string& out) const;

private:
    friend class XmlConfigureTool;
    explicit XmlConfigureNode(std::unique_ptr<XmlElement> element);

    std::unique_ptr<XmlElement> m_Element;
};

/// Reads one XML document. Its top-level nodes are the children of the root element, whatever the
/// root's name.
class NVRHW_API XmlConfigureTool {
public:
    XmlConfigureTool();
    ~XmlConfigureTool();

    /// Opens and parses the document: non-zero on success; 0, with file, line and cause in the
    /// log, otherwise. `version` is the layout of the document; there is only 1.
    int open(const std::string& path, int version, OPEN_MODE mode);

    /// As the operations of XmlConfigureNode, on the root element; 0 when nothing is open.
    int getConfigNode(const std::string& name, SafePointer<XmlConfigureNode>& out) const;
    int getConfigNodeList(const std::string& name,
                          std::vector<SafePointer<XmlConfigureNode>>& out) const;

private:
    std::unique_ptr<XmlConfigureNode> m_Root;
};
