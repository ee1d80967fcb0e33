#include "commands/AbilitySections.h"

namespace {

Json toJson(const MonitorResolution& resolution) {
    return {{"type", resolution.getInputType()},
            {"id", resolution.getResolutionId()},
            {"name", resolution.getResolutionName()},
            {"width", resolution.getWidth()},
            {"height", resolution.getHeight()}};
}

Json toJson(const LayoutModel& model) {
    return {{"id", model.getModelId()}, {"pictures", model.getPicNumber()}};
}

Json toJson(const SubWinDecodingAbility& group) {
    const VideoResolution& video = group.getMaxVideoResolution();
    return {{"windows", group.getSubWinList()},
            {"name", video.getResolutionName()},
            {"width", video.getVideoWidth()},
            {"height", video.getVideoHeight()}};
}

Json toJson(const NetWorkingMode& mode) {
    return {{"type", mode.getWorkingType()},
            {"name", mode.getWorkingName()},
            {"ip", mode.getSupportIpConfigFlag()},
            {"dhcpServer", mode.getSupportDHCPServerFlag()},
            {"dhcpClient", mode.getSupportDHCPClientFlag()},
            {"dns", mode.getSupportDNSConfigFlag()},
            {"poe", mode.getSupportPOEConfigFlag()}};
}

Json toJson(const FileSystemAbility& system) {
    return {{"id", system.getFileSystemId()},
            {"name", system.getName()},
            {"maxPartitionGiB", system.getMaxPartitionSize()},
            {"format", system.getSupportFormatFlag()},
            {"record", system.getSupportRecordFlag()}};
}

// Those that have lists themselves, for the template.
Json toJson(const MonitorAbility& monitor);
Json toJson(const LayoutDecodingAbility& layout);
Json toJson(const NetworkCardAbility& card);

template <typename T> Json toJson(const std::vector<T>& list) {
    Json array = Json::array();
    for (const T& entry : list) {
        array.push_back(toJson(entry));
    }
    return array;
}

Json toJson(const MonitorAbility& monitor) {
    return {{"id", monitor.getMonitorId()},
            {"resolutions", toJson(monitor.getMonitorResolutionList())}};
}

Json toJson(const LayoutDecodingAbility& layout) {
    return {{"layout", layout.getLayoutModeID()},
            {"groups", toJson(layout.getSubWinDecodingAbilityList())}};
}

Json toJson(const NetworkCardAbility& card) {
    return {{"id", card.getNetworkCardId()}, {"modes", toJson(card.getNetWorkingModeList())}};
}

Json generalOf(const NVRDeviceAbility& device) {
    return {{"channels", device.getMaxChannelNumber()},
            {"decodedAtOnce", device.getMaxDecodeAbility()},
            {"playedBackAtOnce", device.getMaxPlaybackChannelNumber()},
            {"bitRate", device.getMaxBitRate()},
            {"disks", device.getDiskNumber()},
            {"dispatches", device.getMaxDispatchNumber()},
            {"alarmInputs", device.getAlarmInDeviceNumber()},
            {"alarmOutputs", device.getAlarmOutputDeviceNumber()},
            {"networkCards", device.getNetworkAbility().getNetworkCardNum()},
            {"intercom", device.getInterPhoneFlag()}};
}

} // namespace

Json AbilitySections::json() const {
    const NVRDeviceAbility& device = m_Abilities.device();
    const WebAbility& web = device.getWebAbility();
    return {{"general", generalOf(device)},
            {"resolutions", toJson(m_Abilities.resolutions())},
            {"monitors", toJson(device.getMonitorAbilityList())},
            {"layouts", toJson(device.getLayoutAbility().getLayoutModelList())},
            {"decoding", toJson(device.getDecodingAbility().getLayoutDecodingAbilityList())},
            {"network", toJson(device.getNetworkAbility().getNetworkCardAbilityList())},
            {"web",
             {{"playedBackAtOnce", web.getMaxPlaybackChannelNum()},
              {"loggedInAtOnce", web.getMaxLoginNum()},
              {"layouts", toJson(web.getLayoutAbility().getLayoutModelList())}}},
            {"fileSystems", toJson(device.getFileSystemAbilityList())}};
}
