#include "platform/MonitorParam.h"

#include "board/documents/ConfigError.h"
#include "board/documents/ReplaceableFile.h"
#include "board/documents/TextFile.h"
#include "board/documents/XmlElement.h"
#include "board/documents/schema/MonitorSchema.h"
#include "platform/base/Mutex.h"

#include <algorithm>

namespace {

using Schema = MonitorSchema;

constexpr char SOURCE[] = "MonitorParamConfig";
constexpr char SUBJECT[] = "MonitorParam";

constexpr int LAYOUT_VERSION = 1;

/// An int of the record.
struct Field {
    const FieldSchema& schema;
    int (MonitorParam::*get)() const;
    void (MonitorParam::*set)(int);
};

constexpr Field FIELDS[] = {
    {Schema::MONITOR_ID, &MonitorParam::getMonitorId, &MonitorParam::setMonitorId},
    {Schema::TYPE, &MonitorParam::getType, &MonitorParam::setType},
    {Schema::RESOLUTION_ID, &MonitorParam::getResolutionId, &MonitorParam::setResolutionId},
    {Schema::X, &MonitorParam::getX, &MonitorParam::setX},
    {Schema::Y, &MonitorParam::getY, &MonitorParam::setY},
    {Schema::WIDTH, &MonitorParam::getWidth, &MonitorParam::setWidth},
    {Schema::HEIGHT, &MonitorParam::getHeight, &MonitorParam::setHeight},
    {Schema::REFRESH_RATE, &MonitorParam::getRefreshRate, &MonitorParam::setRefreshRate},
    {Schema::BRIGHTNESS, &MonitorParam::getBrightness, &MonitorParam::setBrightness},
};

std::string emptyStore() {
    const std::string root = Schema::DOCUMENT.root.name;
    return "<" + root + "><" + Schema::SECTION.name + "/></" + root + ">";
}

MonitorParam readParam(const XmlElement& item) {
    MonitorParam param;
    for (const Field& field : FIELDS) {
        (param.*field.set)(item.number(field.schema));
    }
    param.setEnabled(item.flag(Schema::ENABLED));
    return param;
}

void writeParam(const MonitorParam& param, XmlElement& item) {
    for (const Field& field : FIELDS) {
        item.write(field.schema.name, (param.*field.get)());
    }
    item.write(Schema::ENABLED.name, param.isEnabled());
}

void checkRanges(const MonitorParam& param, const std::string& path) {
    for (const Field& field : FIELDS) {
        const int value = (param.*field.get)();
        const Range range = field.schema.accepted;
        if (!range.has(value)) {
            throw ConfigError(path, 0,
                              "monitor " + std::to_string(param.getMonitorId()) + ": " +
                                  field.schema.name + " must be from " +
                                  std::to_string(range.lowest) + " to " +
                                  std::to_string(range.highest) + ", not " + std::to_string(value));
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
        throw ConfigError(path, 0, "there is no layout " + std::to_string(version));
    }
    std::string text = emptyStore();
    TextFile::readIfPresent(path, text);
    return std::make_shared<XmlDocument>(path, std::move(text));
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
    XmlElement section = XmlElement(document).child(Schema::SECTION.name);
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
    for (const Entry& entry : entriesOf(XmlElement(document).child(Schema::SECTION.name))) {
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
