#pragma once

#include "platform/DeviceAbility.h"
#include "platform/XmlConfigure.h"
#include "platform/base/Export.h"

#include <string>
#include <vector>

/// Reads the NVR ability document. A node that must be there and is not ends the reading with 0; a
/// property that is not there counts as 0, false or empty. The numbers of the document are taken as
/// they stand and compared with no list. Not protected by a lock.
class NVRHW_API NVRAbilityConfigure {
public:
    using Node = SafePointer<XmlConfigureNode>; ///< a section of the document
    using Item = SafePointer<XmlConfigureItem>; ///< an entry of a section

    /// To be set before parse(): there is no default here.
    void setAbilityConfigFileName(const std::string& name) { m_AbilityConfigFileName = name; }

    /// Reads the whole document into `ability`: 1, or 0 as soon as something fails, with everything
    /// before it already set. For one call per object: another one appends the resolutions again.
    int parse(NVRDeviceAbility& ability);

    /// Every resolution of the document, in its order; what parse() has read.
    const std::vector<MonitorResolution>& getMonitorResolutionList() const {
        return m_MonitorResolutionList;
    }

    /// Copies the first resolution of this input type and id: 1, or 0 with `out` unchanged when
    /// there is none.
    int getMonitorResolution(int inputType, int resolutionId, MonitorResolution& out);

    /// Appends the node's resolutions to `list`: 1, or 0 when its items cannot be had.
    int parseMonitorResolution(Node& node, std::vector<MonitorResolution>& list);

    /// As the sections below; fails when it refers to a resolution that getMonitorResolution() does
    /// not find.
    int parseMonitorAbility(Node& node, MonitorAbility& out);

    /// Reads a section: 1, or 0 with the lists of `out` unchanged when it fails.
    int parseLayoutAbility(Node& node, LayoutAbility& out);
    int parseWebAbility(const Node& node, WebAbility& out);
    int parseDecodingAbility(Node& node, DecodingAbility& out);
    int parseNetworkAbility(Node& node, NetworkAbility& out);
    int parseNetworkCardAbility(Node& node, NetworkCardAbility& out);
    int parseNetWorkingMode(Item& item, NetWorkingMode& out);

private:
    int readMonitors(const XmlConfigureTool& document, NVRDeviceAbility& ability);

    std::string m_AbilityConfigFileName;
    std::vector<MonitorResolution> m_MonitorResolutionList;
};
