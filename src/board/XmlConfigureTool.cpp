#include "board/ConfigError.h"
#include "board/XmlElement.h"
#include "platform/XmlConfigure.h"

namespace {

constexpr char SOURCE[] = "XmlConfigureTool";
constexpr char SUBJECT[] = "XmlConfigure";

constexpr int LAYOUT_VERSION = 1;

} // namespace

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
