#pragma once

#include "board/documents/XmlElement.h"
#include "platform/MonitorParam.h"
#include "platform/base/Mutex.h"

#include <string>
#include <vector>

/// What MonitorParamConfig does; failures are ConfigErrors.
class MonitorParamStore {
public:
    MonitorParamStore(int version, const std::string& path);

    void set(const MonitorParam& param);

    /// False when there is no record of this monitor.
    bool get(int monitorId, MonitorParam& param) const;

    std::vector<MonitorParam> getAll() const;

private:
    /// A record and the element it stands in.
    struct Entry {
        XmlElement item;
        MonitorParam param;
    };

    std::shared_ptr<XmlDocument> load() const;
    static std::vector<Entry> entriesOf(const XmlElement& section);

    const int m_Version;
    const std::string m_Path;
    XQMutex m_WriteMutex; // reading, changing and replacing the file is one step
};
