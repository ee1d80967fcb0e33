#include "platform/XmlConfigure.h"

#include "board/documents/ConfigError.h"
#include "board/documents/XmlElement.h"
#include "board/documents/schema/AbilitySchema.h"

#include <optional>

namespace {

constexpr char SOURCE[] = "XmlConfigure";
constexpr char SUBJECT[] = "XmlConfigure";

constexpr int LAYOUT_VERSION = 1;

using Node = SafePointer<XmlConfigureNode>;
using Item = SafePointer<XmlConfigureItem>;

/// What nodes and items share: an element's attributes are its properties.
template <typename Interface> class ElementOf : public Interface {
public:
    explicit ElementOf(XmlElement element) : m_Element(std::move(element)) {}

    int getProperty(const std::string& name, int& out) const override { return get(name, out); }
    int getProperty(const std::string& name, bool& out) const override { return get(name, out); }
    int getProperty(const std::string& name, std::string& out) const override {
        return get(name, out);
    }

protected:
    const XmlElement m_Element;

private:
    template <typename Value> int get(const std::string& name, Value& out) const {
        bool found = false;
        const int whole = ConfigError::guard(SUBJECT, SOURCE, __LINE__,
                                             [&] { found = m_Element.read(name, out); });
        return whole != 0 && found ? 1 : 0;
    }
};

using ElementItem = ElementOf<XmlConfigureItem>;

/// Replaces `out` by objects of this class for all children of this name.
template <typename Element, typename Pointer>
int list(const XmlElement& parent, const std::string& name, std::vector<Pointer>& out) {
    out.clear();
    parent.forEachChild(
        name, [&](std::size_t count) { out.reserve(count); },
        [&](XmlElement child) { out.emplace_back(new Element(std::move(child))); });
    return 1;
}

class ElementNode : public ElementOf<XmlConfigureNode> {
public:
    using ElementOf::ElementOf;

    static int find(const XmlElement& parent, const std::string& name, Node& out) {
        if (mayLack(parent, name) && parent.children(name).empty()) {
            return 0;
        }
        return ConfigError::guard(SUBJECT, SOURCE, __LINE__,
                                  [&] { out = Node(new ElementNode(parent.child(name))); });
    }

    static int findAll(const XmlElement& parent, const std::string& name, std::vector<Node>& out) {
        return list<ElementNode>(parent, name, out);
    }

    int getConfigNode(const std::string& name, Node& out) const override {
        return find(m_Element, name, out);
    }

    int getConfigNodeList(const std::string& name, std::vector<Node>& out) const override {
        return findAll(m_Element, name, out);
    }

    int getItemList(std::vector<Item>& out) const override {
        return list<ElementItem>(m_Element, XmlElement::ITEM, out);
    }

private:
    /// Whether the document whose root the parent is may be without this element.
    static bool mayLack(const XmlElement& parent, const std::string& name) {
        const ElementSchema* known =
            parent.isRoot() ? AbilitySchema::DOCUMENT.root.child(name) : nullptr;
        return known != nullptr && known->occurrence == ElementSchema::OPTIONAL;
    }
};

} // namespace

struct XmlConfigureTool::Impl {
    std::optional<XmlElement> root; ///< of the open document
};

XmlConfigureTool::XmlConfigureTool() : m_Impl(new Impl) {}

XmlConfigureTool::~XmlConfigureTool() = default;

int XmlConfigureTool::open(const std::string& path, int version, OPEN_MODE mode) {
    m_Impl->root.reset();
    return ConfigError::guard(SUBJECT, SOURCE, __LINE__, [&] {
        if (version != LAYOUT_VERSION || mode != OPEN_MODE_READ) {
            throw ConfigError(GlobalEnv::getInstance()->resolve(path), 0,
                              "only layout 1 can be opened, only for reading");
        }
        m_Impl->root = XmlElement::readRoot(path);
    });
}

int XmlConfigureTool::getConfigNode(const std::string& name, Node& out) const {
    return m_Impl->root ? ElementNode::find(*m_Impl->root, name, out) : 0;
}

int XmlConfigureTool::getConfigNodeList(const std::string& name, std::vector<Node>& out) const {
    return m_Impl->root ? ElementNode::findAll(*m_Impl->root, name, out) : 0;
}
