#pragma once

#include "foundation/SafePointer.h"
#include "platform/base/Export.h"

#include <memory>
#include <string>
#include <vector>

/// How a document is opened.
enum OPEN_MODE { OPEN_MODE_READ = 1 };

/// An unnamed entry of a node, with properties of its own. Nodes and items keep the document they
/// come from alive, may be asked from several threads at once, and are made by what is behind
/// XmlConfigureTool; a document has too many to track each allocation.
class NVRHW_API XmlConfigureItem {
public:
    virtual ~XmlConfigureItem() = default;

    /// Converts the property into `out`: non-zero on success. 0 with `out` unchanged when there
    /// is no such property, or when it does not convert whole (which is logged): an int is a
    /// decimal number in range, a bool one of true, false, 1 and 0.
    virtual int getProperty(const std::string& name, int& out) const = 0;
    virtual int getProperty(const std::string& name, bool& out) const = 0;
    virtual int getProperty(const std::string& name, std::string& out) const = 0;
};

/// A named part of the document.
class NVRHW_API XmlConfigureNode {
public:
    virtual ~XmlConfigureNode() = default;

    /// The first child node of this name, a new object: non-zero when found; 0, with `out`
    /// untouched, when not, which is logged where the document needs the node. `out` may be what
    /// holds this node.
    virtual int getConfigNode(const std::string& name,
                              SafePointer<XmlConfigureNode>& out) const = 0;

    /// Replaces `out` by all child nodes of this name in document order; non-zero, also when
    /// there are none.
    virtual int getConfigNodeList(const std::string& name,
                                  std::vector<SafePointer<XmlConfigureNode>>& out) const = 0;

    /// Replaces `out` by the node's items in document order; non-zero, also when there are none.
    virtual int getItemList(std::vector<SafePointer<XmlConfigureItem>>& out) const = 0;

    /// As XmlConfigureItem::getProperty().
    virtual int getProperty(const std::string& name, int& out) const = 0;
    virtual int getProperty(const std::string& name, bool& out) const = 0;
    virtual int getProperty(const std::string& name, std::string& out) const = 0;
};

/// Reads one document, and is used by one thread at a time.
class NVRHW_API XmlConfigureTool {
public:
    XmlConfigureTool();
    ~XmlConfigureTool();

    /// Opens and parses the document, a path of the board: non-zero on success; 0, with file, line
    /// and cause in the log and nothing open, otherwise. `version` is the layout of the document;
    /// there is only 1.
    int open(const std::string& path, int version, OPEN_MODE mode);

    /// As the operations of XmlConfigureNode, for the top-level nodes; 0 when nothing is open.
    int getConfigNode(const std::string& name, SafePointer<XmlConfigureNode>& out) const;
    int getConfigNodeList(const std::string& name,
                          std::vector<SafePointer<XmlConfigureNode>>& out) const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_Impl;
};
