#include "config/Monitor.h"

namespace {

constexpr int LAYOUT_VERSION = 1;
constexpr char PARAM_FILE_NAME[] = "/mnt/mtd/code/config_file/MonitorParamConfig.xml";

} // namespace

Monitor::Monitor() : m_ParamConfig(LAYOUT_VERSION, PARAM_FILE_NAME) {}

int Monitor::setMonitorParam(const MonitorParam& param) {
    return m_ParamConfig.setMonitorParam(param) != 0 ? 1 : -1;
}

int Monitor::getMonitorType(int monitorId, MonitorParam& param) {
    return m_ParamConfig.getMonitorType(monitorId, param);
}

int Monitor::getAllMonitorParam(std::vector<MonitorParam>& params) {
    return m_ParamConfig.getAllMonitorParam(params);
}
