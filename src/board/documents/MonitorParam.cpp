#include "platform/MonitorParam.h"

#include "board/documents/ConfigError.h"
#include "board/documents/ReplaceableFile.h"
#include "board/documents/TextFile.h"
#include "board/documents/XmlElement.h"
#include "platform/base/Mutex.h"

#include <algorithm>

namespace {

constexpr char SOURCE[] = "MonitorParamConfig";
constexpr char SUBJECT[] = "MonitorParam";

constexpr int LAYOUT_VERSION = 1;
constexpr char EMPTY_STORE[] = "<MonitorParamConfig><Monitor/></MonitorParamConfig>";
constexpr char SECTION[] = "Monitor";
constexpr char MONITOR_ID[] = "monitorId";
constexpr char ENABLED[] = "enabled";

/// An int of the record.
struct Field {
    const char* name;
    XmlElement::Range range;
    int (MonitorParam::*get)() const;
    void (MonitorParam::*set)(int);
};

constexpr XmlElement::Range ANY{};
constexpr XmlElement::Range NOT_NEGATIVE{0, std::numeric_limits<int>::max()};
constexpr XmlElement::Range PERCENT{0, 100};

constexpr Field FIELDS[] = {
    {MONITOR_ID, ANY, &MonitorParam::getMonitorId, &MonitorParam::setMonitorId},
    {"type", ANY, &MonitorParam::getType, &MonitorParam::setType},
    {"resolutionId", NOT_NEGATIVE, &MonitorParam::getResolutionId, &MonitorParam::setResolutionId},
    {"x", ANY, &MonitorParam::getX, &MonitorParam::setX},
    {"y", ANY, &MonitorParam::getY, &MonitorParam::setY},
    {"width", NOT_NEGATIVE, &MonitorParam::getWidth, &MonitorParam::setWidth},
    {"height", NOT_NEGATIVE, &MonitorParam::getHeight, &MonitorParam::setHeight},
    {"refreshRate", NOT_NEGATIVE, &MonitorParam::getRefreshRate, &MonitorParam::setRefreshRate},
    {"brightness", PERCENT, &MonitorParam::getBrightness, &MonitorParam::setBrightness},
};

MonitorParam readParam(const XmlElement& item) {
    MonitorParam param;
    item.require(MONITOR_ID, ANY);
    for (const Field& field : FIELDS) {
        int value = (param.*field.get)();
        item.read(field.name, value, field.range);
        (param.*field.set)(value);
    }
    bool enabled = param.isEnabled();
    item.read(ENABLED, enabled);
    param.setEnabled(enabled);
    return param;
}

void writeParam(const MonitorParam& param, XmlElement& item) {
    for (const Field& field : FIELDS) {
        item.write(field.name, (param.*field.get)());
    }
    item.write(ENABLED, param.isEnabled());
}

void checkRanges(const MonitorParam& param, const std::string& path) {
    for (const Field& field : FIELDS) {
        const int value = (param.*field.get)();
        if (value < field.range.lowest || value > field.range.highest) {
            throw ConfigError(path + ": monitor " + std::to_string(param.getMonitorId()) + ": " +
                              field.name + " must be from " + std::to_string(field.range.lowest) +
                              " to " + std::to_string(field.range.highest) + ", not " +
                              std::to_string(value));
        }
    }
}

} // namespace

/// What the operations do; failures are ConfigErrors.
struct MonitorParamConfig::Impl {
    /// A record and the element it stands in.
    struct Entry {
        XmlElement item;
        MonitorParam param;
    };

    std::shared_ptr<XmlDocument> load() const;
    static std::vector<Entry> entriesOf(const XmlElement& section);
    void set(const MonitorParam& param);
    std::vector<MonitorParam> getAll() const;

    const int version;
    const std::string path;
    XQMutex writeMutex{}; ///< reading, changing and replacing the file is one step
};

std::shared_ptr<XmlDocument> MonitorParamConfig::Impl::load() const {
    if (version != LAYOUT_VERSION) {
        throw ConfigError(path + ": there is no layout " + std::to_string(version));
    }
    std::string text = EMPTY_STORE;
    TextFile::readIfPresent(path, text);
    return std::make_shared<XmlDocument>(path, text);
}

std::vector<MonitorParamConfig::Impl::Entry>
MonitorParamConfig::Impl::entriesOf(const XmlElement& section) {
    std::vector<Entry> entries;
    for (const XmlElement& item : section.children(XmlElement::ITEM)) {
        entries.push_back({item, readParam(item)});
    }
    return entries;
}

void MonitorParamConfig::Impl::set(const MonitorParam& param) {
    checkRanges(param, path);
    const XQMutexManager guard(writeMutex, SOURCE, __LINE__);
    ReplaceableFile file(path);
    file.lock();
    const std::shared_ptr<XmlDocument> document = load();
    XmlElement section = XmlElement(document).child(SECTION);
    const std::vector<Entry> entries = entriesOf(section);
    const auto same = std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) {
        return entry.param.getMonitorId() == param.getMonitorId();
    });
    XmlElement item = same == entries.end() ? section.append(XmlElement::ITEM) : same->item;
    writeParam(param, item);
    file.replace(document->text());
}

std::vector<MonitorParam> MonitorParamConfig::Impl::getAll() const {
    const std::shared_ptr<XmlDocument> document = load();
    std::vector<MonitorParam> params;
    for (const Entry& entry : entriesOf(XmlElement(document).child(SECTION))) {
        params.push_back(entry.param);
    }
    return params;
}

MonitorParamConfig::MonitorParamConfig(int version, const std::string& path)
    : m_Impl(new Impl{version, GlobalEnv::getInstance()->resolve(path)}) {}

MonitorParamConfig::~MonitorParamConfig() = default;

int MonitorParamConfig::setMonitorParam(const MonitorParam& param) {
    return ConfigError::guard(SUBJECT, SOURCE, __LINE__, [&] { m_Impl->set(param); });
}

int MonitorParamConfig::getMonitorType(int monitorId, MonitorParam& param) {
    std::vector<MonitorParam> all;
    getAllMonitorParam(all);
    const auto found = std::find_if(all.begin(), all.end(), [&](const MonitorParam& stored) {
        return stored.getMonitorId() == monitorId;
    });
    if (found == all.end()) {
        return 0;
    }
    param = *found;
    return 1;
}

int MonitorParamConfig::getAllMonitorParam(std::vector<MonitorParam>& params) {
    return ConfigError::guard(SUBJECT, SOURCE, __LINE__, [&] { params = m_Impl->getAll(); });
}
