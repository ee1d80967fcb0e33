#pragma once

#include "ability/DeviceAbilityCollector.h"

/// What the recorder can do, from the board's ability documents.
class Abilities {
public:
    /// Reads the documents. Raises CommandError when one cannot be read.
    Abilities();

    const NVRDeviceAbility& device() const { return m_Collector.getDeviceAbility(); }
    const std::vector<MonitorResolution>& resolutions() const {
        return m_Collector.getMonitorResolutionList();
    }

private:
    DeviceAbilityCollector m_Collector;
};
