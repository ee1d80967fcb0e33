#include "platform/XmlConfigure.h"

#include "board/documents/ConfigProperty.h"

namespace {

constexpr char SOURCE[] = "XmlConfigure";
constexpr char SUBJECT[] = "XmlConfigure";

constexpr int LAYOUT_VERSION = 1;

} // namespace

XmlConfigureItem::XmlConfigureItem(std::unique_ptr<XmlElement> element)
    : m_Element(std::move(element)) {}

XmlConfigureItem::~XmlConfigureItem() = default;

int XmlConfigureItem::getProperty(const std::string& name, int& out) const {
    return ConfigProperty::get(*m_Element, name, out);
}

int XmlConfigureItem::getProperty(const std::string& name, bool& out) const {
    return ConfigProperty::get(*m_Element, name, out);
}

int XmlConfigureItem::getProperty(const std::string& name, std::string& out) const {
    return ConfigProperty::get(*m_Element, name, out);
}

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

XmlConfigureTool::XmlConfigureTool() = default;

XmlConfigureTool::~XmlConfigureTool() = default;

int XmlConfigureTool::open(const std::string& path, int version, OPEN_MODE mode) {
    m_Root.reset();
    return ConfigError::guard(SUBJECT, SOURCE, __LINE__, [&] {
        if (version != LAYOUT_VERSION || mode != OPEN_MODE_READ) {
            throw ConfigError(GlobalEnv::getInstance()->resolve(path) +
                              ": only layout 1 can be opened, only for reading");
        }
        auto root = std::make_unique<XmlElement>(XmlElement::readRoot(path));
        m_Root.reset(new (SOURCE, __LINE__) XmlConfigureNode(std::move(root)));
    });
}

int XmlConfigureTool::getConfigNode(const std::string& name,
                                    SafePointer<XmlConfigureNode>& out) const {
    return m_Root == nullptr ? 0 : m_Root->getConfigNode(name, out);
}

int XmlConfigureTool::getConfigNodeList(const std::string& name,
                                        std::vector<SafePointer<XmlConfigureNode>>& out) const {
    return m_Root == nullptr ? 0 : m_Root->getConfigNodeList(name, out);
}
