#include "ability/ConfigReading.h"
#include "ability/NVRAbilityConfigure.h"
#include "platform/Diagnostics.h"

#include <cstdio>

using namespace NS_ConfigReading;

namespace {

// What each layout and window is asked for, made once.
const std::string MODEL_ID = "modelId";
const std::string PIC_NUMBER = "picNumber";
const std::string WIN_ID = "winId";
const std::string WIDTH = "width";
const std::string HEIGHT = "height";
const std::string RESOLUTION_NAME = "resolutionname";
const std::string MAX_VIDEO_RESOLUTION = "MaxVideoResolution";
const std::string SUB_WIN_LIST = "SubWinList";
const std::string LAYOUT_MODE_ID = "layoutmodeId";
const std::string SUB_WIN_DECODING_ABILITY = "SubWinDecodingAbility";

int readResolution(const Item& item, MonitorResolution& out) {
    out.setResolutionId(property<int>(item, "id"));
    out.setResolutionName(property<std::string>(item, "name").c_str());
    out.setInputType(property<int>(item, "type"));
    out.setWidth(property<int>(item, WIDTH));
    out.setHeight(property<int>(item, HEIGHT));
    return 1;
}

int readLayoutModel(const Item& item, LayoutModel& out) {
    out.setModelId(property<int>(item, MODEL_ID));
    out.setPicNumber(property<int>(item, PIC_NUMBER));
    return 1;
}

void trace(const MonitorResolution& resolution) {
    if (GlobalEnv::getInstance()->getPrintFlag() != 0) {
        std::printf("---MonitorResolution:MonitorResolutionID= %d,Type = %d,Name = %s,Width = "
                    "%d,Height = %d-----\n",
                    resolution.getResolutionId(), resolution.getInputType(),
                    resolution.getResolutionName(), resolution.getWidth(), resolution.getHeight());
    }
}

VideoResolution readVideoResolution(const Node& node) {
    VideoResolution resolution;
    resolution.setVideoWidth(property<int>(node, WIDTH));
    resolution.setVideoHeight(property<int>(node, HEIGHT));
    resolution.setResolutionName(property<std::string>(node, RESOLUTION_NAME).c_str());
    return resolution;
}

int readSubWinGroup(const Node& group, SubWinDecodingAbility& out) {
    const int resolution = readNode(group, MAX_VIDEO_RESOLUTION, [&](const Node& node) {
        out.setMaxVideoResolution(readVideoResolution(node));
        return 1;
    });
    const auto readWindows = [&](const Node& node) {
        std::vector<int> windows;
        const auto read = [](const Item& item, int& window) {
            window = property<int>(item, WIN_ID);
            return 1;
        };
        if (readItems(node, windows, read) == 0) {
            return 0;
        }
        out.setSubWinList(windows);
        return 1;
    };
    return resolution != 0 ? readNode(group, SUB_WIN_LIST, readWindows) : 0;
}

int readLayoutDecoding(const Node& layout, LayoutDecodingAbility& out) {
    out.setLayoutModeID(property<int>(layout, LAYOUT_MODE_ID));
    std::vector<SubWinDecodingAbility> groups;
    if (readNodes(layout, SUB_WIN_DECODING_ABILITY, groups, readSubWinGroup) == 0) {
        return 0;
    }
    out.setSubWinDecodingAbilityList(groups);
    return 1;
}

} // namespace

int NVRAbilityConfigure::parseMonitorResolution(Node& node, std::vector<MonitorResolution>& list) {
    return readItems(node, list, readResolution);
}

int NVRAbilityConfigure::parseMonitorAbility(Node& node, MonitorAbility& out) {
    out.setMonitorId(property<int>(node, "monitorId"));
    std::vector<Node> groups;
    if (node->getConfigNodeList("MonitorResolution", groups) == 0) {
        groups.clear(); // a monitor may have none, whatever the failed call has left
    }
    std::vector<MonitorResolution> resolutions;
    for (const Node& group : groups) {
        const int inputType = property<int>(group, "monitorType");
        const auto readReference = [&](const Item& item, MonitorResolution& resolution) {
            const int id = property<int>(item, "monitorResolutionId");
            if (getMonitorResolution(inputType, id, resolution) == 0) {
                return 0;
            }
            trace(resolution);
            return 1;
        };
        if (readItems(group, resolutions, readReference) == 0) {
            return 0;
        }
    }
    out.setMonitorResolutionList(resolutions);
    return 1;
}

int NVRAbilityConfigure::parseLayoutAbility(Node& node, LayoutAbility& out) {
    std::vector<LayoutModel> models;
    if (readItems(node, models, readLayoutModel) == 0) {
        return 0;
    }
    out.setLayoutModelList(models);
    return 1;
}

int NVRAbilityConfigure::parseWebAbility(const Node& node, WebAbility& out) {
    out.setMaxPlaybackChannelNum(property<int>(node, "MaxPlaybackChannelNumber"));
    out.setMaxLoginNum(property<int>(node, "MaxLoginNum"));
    return readNode(node, "LayoutAbility", [&](Node& child) {
        LayoutAbility layouts;
        if (parseLayoutAbility(child, layouts) == 0) {
            return 0;
        }
        out.setLayoutAbility(layouts);
        return 1;
    });
}

int NVRAbilityConfigure::parseDecodingAbility(Node& node, DecodingAbility& out) {
    std::vector<LayoutDecodingAbility> layouts;
    if (readNodes(node, "LayoutDecodingAbility", layouts, readLayoutDecoding) == 0) {
        return 0;
    }
    out.setLayoutDecodingAbilityList(layouts);
    return 1;
}

int NVRAbilityConfigure::parseNetworkAbility(Node& node, NetworkAbility& out) {
    out.setNetworkCardNum(property<int>(node, "networkCardNum"));
    std::vector<NetworkCardAbility> cards;
    const auto read = [&](Node& child, NetworkCardAbility& card) {
        return parseNetworkCardAbility(child, card);
    };
    if (readNodes(node, "NetworkCard", cards, read) == 0) {
        return 0;
    }
    out.setNetworkCardAbilityList(cards);
    return 1;
}

int NVRAbilityConfigure::parseNetworkCardAbility(Node& node, NetworkCardAbility& out) {
    out.setNetworkCardId(property<int>(node, "networkcardID"));
    std::vector<NetWorkingMode> modes;
    const auto read = [&](Item& item, NetWorkingMode& mode) {
        return parseNetWorkingMode(item, mode);
    };
    if (readItems(node, modes, read) == 0) {
        return 0;
    }
    out.setNetWorkingModeList(modes);
    return 1;
}

int NVRAbilityConfigure::parseNetWorkingMode(Item& item, NetWorkingMode& out) {
    out.setWorkingType(property<int>(item, "networkingType"));
    out.setWorkingName(property<std::string>(item, "netWorkingModeName").c_str());
    out.setSupportIpConfigFlag(property<bool>(item, "supportIPCConfigFlag"));
    out.setSupportDHCPServerFlag(property<bool>(item, "supportDHCPServerFlag"));
    out.setSupportDHCPClientFlag(property<bool>(item, "supportDHCPClientFlag"));
    out.setSupportDNSConfigFlag(property<bool>(item, "supportDNSConfigFlag"));
    out.setSupportPOEConfigFlag(property<bool>(item, "supportPOEConfigFlag"));
    return 1;
}
