#pragma once

#include "platform/XmlConfigure.h"

#include <string>
#include <utility>
#include <vector>

/// What every section of a configuration document is read with.
namespace NS_ConfigReading {

using Node = SafePointer<XmlConfigureNode>;
using Item = SafePointer<XmlConfigureItem>;

/// The property of a node or an item; 0, false or empty when it is not there.
template <typename Value, typename Source>
Value property(const Source& source, const std::string& name) {
    Value value{};
    source->getProperty(name, value);
    return value;
}

/// Reads every source into a record of its own and appends the records to `records`, up to the
/// first that fails. `read` takes a source and a record and answers 0 for failure.
template <typename Source, typename Record, typename Read>
int readEach(std::vector<Source>& sources, std::vector<Record>& records, Read read) {
    records.reserve(records.size() + sources.size());
    for (Source& source : sources) {
        Record record{};
        if (read(source, record) == 0) {
            return 0;
        }
        records.push_back(std::move(record));
    }
    return 1;
}

/// readEach() for the child nodes of this name; also fails when there is no list of them.
/// `parent` is a node or the pointer to a document.
template <typename Parent, typename Record, typename Read>
int readNodes(const Parent& parent, const std::string& name, std::vector<Record>& records,
              Read read) {
    std::vector<Node> nodes;
    return parent->getConfigNodeList(name, nodes) != 0 ? readEach(nodes, records, read) : 0;
}

/// readEach() for the items of a node; also fails when there is no list of them.
template <typename Record, typename Read>
int readItems(const Node& node, std::vector<Record>& records, Read read) {
    std::vector<Item> items;
    return node->getItemList(items) != 0 ? readEach(items, records, read) : 0;
}

/// Runs `read` on the child node of this name: its result, or 0 when there is no such node.
template <typename Parent, typename Read>
int readNode(const Parent& parent, const std::string& name, Read read) {
    Node node;
    return parent->getConfigNode(name, node) != 0 ? read(node) : 0;
}

} // namespace NS_ConfigReading
