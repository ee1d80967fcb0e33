#include "board/ConfigProperty.h"
#include "platform/XmlConfigure.h"

namespace {

constexpr char SOURCE[] = "XmlConfigureNode";
constexpr char SUBJECT[] = "XmlConfigure";

} // namespace

XmlConfigureNode::XmlConfigureNode(std::unique_ptr<XmlElement> element)
    : m_Element(std::move(element)) {}

XmlConfigureNode::~XmlConfigureNode() = default;

int XmlConfigureNode::getConfigNode(const std::string& name,
                                    SafePointer<XmlConfigureNode>& out) const {
    return ConfigError::guard(SUBJECT, SOURCE, __LINE__, [&] {
        auto child = std::make_unique<XmlElement>(m_Element->child(name));
        out = SafePointer<XmlConfigureNode>(new (SOURCE, __LINE__)
                                                XmlConfigureNode(std::move(child)));
    });
}

int XmlConfigureNode::getConfigNodeList(const std::string& name,
                                        std::vector<SafePointer<XmlConfigureNode>>& out) const {
    out.clear();
    for (const XmlElement& child : m_Element->children(name)) {
        out.emplace_back(new (SOURCE, __LINE__)
                             XmlConfigureNode(std::make_unique<XmlElement>(child)));
    }
    return 1;
}

int XmlConfigureNode::getItemList(std::vector<SafePointer<XmlConfigureItem>>& out) const {
    out.clear();
    for (const XmlElement& item : m_Element->children(XmlElement::ITEM)) {
        out.emplace_back(new (SOURCE, __LINE__)
                             XmlConfigureItem(std::make_unique<XmlElement>(item)));
    }
    return 1;
}

int XmlConfigureNode::getProperty(const std::string& name, int& out) const {
    return ConfigProperty::get(*m_Element, name, out);
}

int XmlConfigureNode::getProperty(const std::string& name, bool& out) const {
    return ConfigProperty::get(*m_Element, name, out);
}

int XmlConfigureNode::getProperty(const std::string& name, std::string& out) const {
    return ConfigProperty::get(*m_Element, name, out);
}
