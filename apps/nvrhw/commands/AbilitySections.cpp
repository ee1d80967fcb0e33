#include "commands/AbilitySections.h"

#include <map>
#include <utility>

namespace {

constexpr Table::Alignment RIGHT = Table::RIGHT;

std::string size(int width, int height) {
    return std::to_string(width) + "x" + std::to_string(height);
}

std::string yes(bool flag) { return flag ? "yes" : "-"; }

void append(std::string& list, const std::string& entry) {
    list += (list.empty() ? "" : ", ") + entry;
}

// "0-3, 7": the windows of one group usually follow each other.
std::string ranges(const std::vector<int>& numbers) {
    std::string text;
    for (std::size_t first = 0, last = 0; first < numbers.size(); first = ++last) {
        while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) {
            ++last;
        }
        append(text, std::to_string(numbers[first]) +
                         (last > first ? "-" + std::to_string(numbers[last]) : ""));
    }
    return text;
}

} // namespace

std::string AbilitySections::text(bool hasColours) const {
    const std::pair<const char*, Table> sections[] = {
        {"General", general()},   {"Display resolutions", resolutions()},
        {"Monitors", monitors()}, {"Layouts", layouts()},
        {"Decoding", decoding()}, {"Network", network()},
        {"Web client", web()},    {"File systems", fileSystems()}};
    std::string text;
    for (const auto& [title, table] : sections) {
        Table heading({{""}});
        heading.addHeading(title);
        text += (text.empty() ? "" : "\n") + heading.text(hasColours) + table.text(hasColours);
    }
    return text;
}

Table AbilitySections::general() const {
    const NVRDeviceAbility& device = m_Abilities.device();
    Table table({{""}, {"", RIGHT}, {""}});
    table.add({"channels", device.getMaxChannelNumber()});
    table.add({"decoded at once", device.getMaxDecodeAbility()});
    table.add({"played back at once", device.getMaxPlaybackChannelNumber()});
    table.add({"bit rate", device.getMaxBitRate(), "kbit/s"});
    table.add({"disks", device.getDiskNumber()});
    table.add({"dispatches", device.getMaxDispatchNumber()});
    table.add({"alarm inputs", device.getAlarmInDeviceNumber()});
    table.add({"alarm outputs", device.getAlarmOutputDeviceNumber()});
    table.add({"network cards", device.getNetworkAbility().getNetworkCardNum()});
    table.add({"intercom", device.getInterPhoneFlag() ? "yes" : "no"});
    return table;
}

Table AbilitySections::resolutions() const {
    Table table({{"TYPE", RIGHT}, {"ID", RIGHT}, {"NAME"}, {"SIZE"}});
    for (const MonitorResolution& resolution : m_Abilities.resolutions()) {
        table.add({resolution.getInputType(), resolution.getResolutionId(),
                   std::string(resolution.getResolutionName()),
                   size(resolution.getWidth(), resolution.getHeight())});
    }
    return table;
}

Table AbilitySections::monitors() const {
    Table table({{"ID", RIGHT}, {"TYPE", RIGHT}, {"RESOLUTIONS"}});
    for (const MonitorAbility& monitor : m_Abilities.device().getMonitorAbilityList()) {
        std::map<int, std::string> names; // by type
        for (const MonitorResolution& resolution : monitor.getMonitorResolutionList()) {
            append(names[resolution.getInputType()], resolution.getResolutionName());
        }
        Table::Cell id = monitor.getMonitorId();
        for (const auto& [type, list] : names) {
            table.add({id, type, list});
            id = "";
        }
        if (names.empty()) {
            table.add({id, "", "none"});
        }
    }
    return table;
}

Table AbilitySections::layouts() const {
    Table table({{"ID", RIGHT}, {"PICTURES", RIGHT}});
    for (const LayoutModel& model : m_Abilities.device().getLayoutAbility().getLayoutModelList()) {
        table.add({model.getModelId(), model.getPicNumber()});
    }
    return table;
}

Table AbilitySections::decoding() const {
    Table table({{"LAYOUT", RIGHT}, {"WINDOWS"}, {"LARGEST VIDEO"}, {"SIZE"}});
    for (const LayoutDecodingAbility& layout :
         m_Abilities.device().getDecodingAbility().getLayoutDecodingAbilityList()) {
        for (const SubWinDecodingAbility& group : layout.getSubWinDecodingAbilityList()) {
            const VideoResolution& video = group.getMaxVideoResolution();
            table.add({layout.getLayoutModeID(), ranges(group.getSubWinList()),
                       std::string(video.getResolutionName()),
                       size(video.getVideoWidth(), video.getVideoHeight())});
        }
    }
    return table;
}

Table AbilitySections::network() const {
    Table table({{"CARD", RIGHT},
                 {"TYPE", RIGHT},
                 {"MODE"},
                 {"IP"},
                 {"DHCP SERVER"},
                 {"DHCP CLIENT"},
                 {"DNS"},
                 {"POE"}});
    for (const auto& card : m_Abilities.device().getNetworkAbility().getNetworkCardAbilityList()) {
        for (const NetWorkingMode& mode : card.getNetWorkingModeList()) {
            table.add({card.getNetworkCardId(), mode.getWorkingType(),
                       std::string(mode.getWorkingName()), yes(mode.getSupportIpConfigFlag()),
                       yes(mode.getSupportDHCPServerFlag()), yes(mode.getSupportDHCPClientFlag()),
                       yes(mode.getSupportDNSConfigFlag()), yes(mode.getSupportPOEConfigFlag())});
        }
    }
    return table;
}

Table AbilitySections::web() const {
    const WebAbility& web = m_Abilities.device().getWebAbility();
    std::string layouts;
    for (const LayoutModel& model : web.getLayoutAbility().getLayoutModelList()) {
        append(layouts, std::to_string(model.getPicNumber()));
    }
    Table table({{""}, {""}});
    table.add({"played back at once", web.getMaxPlaybackChannelNum()});
    table.add({"logged in at once", web.getMaxLoginNum()});
    table.add({"pictures of its layouts", layouts});
    return table;
}

Table AbilitySections::fileSystems() const {
    Table table({{"ID", RIGHT}, {"NAME"}, {"LARGEST PARTITION"}, {"FORMAT"}, {"RECORD"}});
    for (const FileSystemAbility& system : m_Abilities.device().getFileSystemAbilityList()) {
        const int limit = system.getMaxPartitionSize();
        table.add({system.getFileSystemId(), system.getName(),
                   limit == 0 ? "no limit" : std::to_string(limit) + " GiB",
                   yes(system.getSupportFormatFlag()), yes(system.getSupportRecordFlag())});
    }
    return table;
}
