#include "platform/MonitorParam.h"

#include "board/documents/ConfigError.h"
#include "board/documents/MonitorParamStore.h"

namespace {

constexpr char SOURCE[] = "MonitorParamConfig";
constexpr char SUBJECT[] = "MonitorParam";

} // namespace

MonitorParamConfig::MonitorParamConfig(int version, const std::string& path)
    : m_Store(new MonitorParamStore(version, path)) {}

MonitorParamConfig::~MonitorParamConfig() = default;

int MonitorParamConfig::setMonitorParam(const MonitorParam& param) {
    return ConfigError::guard(SUBJECT, SOURCE, __LINE__, [&] { m_Store->set(param); });
}

int MonitorParamConfig::getMonitorType(int monitorId, MonitorParam& param) {
    bool found = false;
    const int read = ConfigError::guard(SUBJECT, SOURCE, __LINE__,
                                        [&] { found = m_Store->get(monitorId, param); });
    return read != 0 && found ? 1 : 0;
}

int MonitorParamConfig::getAllMonitorParam(std::vector<MonitorParam>& params) {
    return ConfigError::guard(SUBJECT, SOURCE, __LINE__, [&] { params = m_Store->getAll(); });
}
