#pragma once

#include "platform/MonitorParam.h"
#include "platform/base/Allocation.h"
#include "platform/base/Export.h"

#include <vector>

/// The parameters of the recorder's monitors, kept in
/// "/mnt/mtd/code/config_file/MonitorParamConfig.xml". Thread-safe, as the store behind it.
class NVRHW_API Monitor {
public:
    NVRHW_TRACKED

    Monitor();

    /// 1 when the parameters are stored, -1 when they are refused.
    int setMonitorParam(const MonitorParam& param);

    /// As MonitorParamConfig::getMonitorType().
    int getMonitorType(int monitorId, MonitorParam& param);

    /// As MonitorParamConfig::getAllMonitorParam().
    int getAllMonitorParam(std::vector<MonitorParam>& params);

private:
    MonitorParamConfig m_ParamConfig;
};
