#include "board/documents/MonitorParamStore.h"

#include "board/documents/ConfigError.h"
#include "board/documents/ReplaceableFile.h"
#include "board/documents/TextFile.h"

#include <algorithm>

namespace {

constexpr char SOURCE[] = "MonitorParamStore";

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

MonitorParamStore::MonitorParamStore(int version, const std::string& path)
    : m_Version(version), m_Path(GlobalEnv::getInstance()->resolve(path)) {}

std::shared_ptr<XmlDocument> MonitorParamStore::load() const {
    if (m_Version != LAYOUT_VERSION) {
        throw ConfigError(m_Path + ": there is no layout " + std::to_string(m_Version));
    }
    std::string text = EMPTY_STORE;
    TextFile::readIfPresent(m_Path, text);
    return std::make_shared<XmlDocument>(m_Path, text);
}

std::vector<MonitorParamStore::Entry> MonitorParamStore::entriesOf(const XmlElement& section) {
    std::vector<Entry> entries;
    for (const XmlElement& item : section.children(XmlElement::ITEM)) {
        entries.push_back({item, readParam(item)});
    }
    return entries;
}

void MonitorParamStore::set(const MonitorParam& param) {
    checkRanges(param, m_Path);
    const XQMutexManager guard(m_WriteMutex, SOURCE, __LINE__);
    ReplaceableFile file(m_Path);
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

bool MonitorParamStore::get(int monitorId, MonitorParam& param) const {
    for (const MonitorParam& stored : getAll()) {
        if (stored.getMonitorId() == monitorId) {
            param = stored;
            return true;
        }
    }
    return false;
}

std::vector<MonitorParam> MonitorParamStore::getAll() const {
    const std::shared_ptr<XmlDocument> document = load();
    std::vector<MonitorParam> params;
    for (const Entry& entry : entriesOf(XmlElement(document).child(SECTION))) {
        params.push_back(entry.param);
    }
    return params;
}
