#include "ability/NVRAbilityConfigure.h"

#include "ability/ConfigReading.h"

using namespace NS_ConfigReading;

namespace {

constexpr int LAYOUT_VERSION = 1;

LayoutModel layoutModel(int modelId, int picNumber) {
    LayoutModel model;
    model.setModelId(modelId);
    model.setPicNumber(picNumber);
    return model;
}

/// For a recorder that does not say what its web client may do.
WebAbility defaultWebAbility() {
    LayoutAbility layouts;
    layouts.setLayoutModelList({layoutModel(0, 1), layoutModel(1, 4)});
    WebAbility ability;
    ability.setLayoutAbility(layouts);
    ability.setMaxLoginNum(1);
    ability.setMaxPlaybackChannelNum(1);
    return ability;
}

int readChannels(const XmlConfigureTool& document, NVRDeviceAbility& ability) {
    return readNode(&document, "ChannelAbility", [&](const Node& node) {
        ability.setMaxChannelNumber(property<int>(node, "channelNumber"));
        ability.setMaxDecodeAbility(property<int>(node, "maxDecodeAbility"));
        ability.setMaxBitRate(property<int>(node, "maxBitRate"));
        ability.setDiskNumber(property<int>(node, "diskNumber"));
        return 1;
    });
}

int readDispatch(const XmlConfigureTool& document, NVRDeviceAbility& ability) {
    Node node;
    const bool given = document.getConfigNode("DispatchAbility", node) != 0;
    ability.setMaxDispatchNumber(given ? property<int>(node, "MaxDispatchNum") : 0);
    return 1;
}

int readPlayback(const XmlConfigureTool& document, NVRDeviceAbility& ability) {
    return readNode(&document, "MaxPlaybackChannelNumber", [&](const Node& node) {
        ability.setMaxPlaybackChannelNumber(property<int>(node, "value"));
        return 1;
    });
}

int readInterPhone(const XmlConfigureTool& document, NVRDeviceAbility& ability) {
    return readNode(&document, "InterPhoneFlag", [&](const Node& node) {
        ability.setInterPhoneFlag(property<bool>(node, "InterPhoneFlag"));
        return 1;
    });
}

int readAlarms(const XmlConfigureTool& document, NVRDeviceAbility& ability) {
    return readNode(&document, "AlarmAbility", [&](const Node& node) {
        ability.setAlarmInDeviceNumber(property<int>(node, "alarmInDeviceNumber"));
        ability.setAlarmOutputDeviceNumber(property<int>(node, "alarmOutputDeviceNumber"));
        return 1;
    });
}

int readNumbers(const XmlConfigureTool& document, NVRDeviceAbility& ability) {
    const bool whole = readChannels(document, ability) != 0 &&
                       readDispatch(document, ability) != 0 &&
                       readPlayback(document, ability) != 0 &&
                       readInterPhone(document, ability) != 0 && readAlarms(document, ability) != 0;
    return whole ? 1 : 0;
}

int readWeb(NVRAbilityConfigure& reader, const XmlConfigureTool& document,
            NVRDeviceAbility& ability) {
    Node node;
    WebAbility web;
    if (document.getConfigNode("WebAbility", node) == 0) {
        web = defaultWebAbility();
    } else if (reader.parseWebAbility(node, web) == 0) {
        return 0;
    }
    ability.setWebAbility(web);
    return 1;
}

} // namespace

int NVRAbilityConfigure::parse(NVRDeviceAbility& ability) {
    XmlConfigureTool document;
    if (document.open(m_AbilityConfigFileName, LAYOUT_VERSION, OPEN_MODE_READ) == 0) {
        return 0;
    }
    const auto readSection = [&](const char* name, auto parseInto, auto record, auto set) {
        return readNode(&document, name, [&](Node& node) {
            if ((this->*parseInto)(node, record) == 0) {
                return 0;
            }
            (ability.*set)(record);
            return 1;
        });
    };
    const bool whole = readNumbers(document, ability) != 0 &&
                       readMonitors(document, ability) != 0 &&
                       readSection("LayoutAbility", &NVRAbilityConfigure::parseLayoutAbility,
                                   LayoutAbility(), &NVRDeviceAbility::setLayoutAbility) != 0 &&
                       readSection("DecodingAbility", &NVRAbilityConfigure::parseDecodingAbility,
                                   DecodingAbility(), &NVRDeviceAbility::setDecodingAbility) != 0 &&
                       readSection("NetworkAbility", &NVRAbilityConfigure::parseNetworkAbility,
                                   NetworkAbility(), &NVRDeviceAbility::setNetworkAbility) != 0 &&
                       readWeb(*this, document, ability) != 0;
    return whole ? 1 : 0;
}

int NVRAbilityConfigure::readMonitors(const XmlConfigureTool& document, NVRDeviceAbility& ability) {
    // The monitors refer to the resolutions, so these come first.
    const int resolutions = readNode(&document, "MonitorResolution", [&](Node& node) {
        return parseMonitorResolution(node, m_MonitorResolutionList);
    });
    std::vector<MonitorAbility> monitors;
    const auto read = [&](Node& node, MonitorAbility& monitor) {
        return parseMonitorAbility(node, monitor);
    };
    if (resolutions == 0 || readNodes(&document, "MonitorAbility", monitors, read) == 0) {
        return 0;
    }
    ability.setMonitorAbilityList(monitors);
    return 1;
}

int NVRAbilityConfigure::getMonitorResolution(int inputType, int resolutionId,
                                              MonitorResolution& out) {
    for (const MonitorResolution& resolution : m_MonitorResolutionList) {
        if (resolution.getInputType() == inputType &&
            resolution.getResolutionId() == resolutionId) {
            out = resolution;
            return 1;
        }
    }
    return 0;
}
