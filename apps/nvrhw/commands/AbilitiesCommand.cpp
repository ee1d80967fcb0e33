#include "commands/Abilities.h"
#include "commands/Commands.h"
#include "config/ConfigFileNameConst.h"
#include "print/Console.h"
#include "print/LogBook.h"
#include "print/Table.h"

#include <map>

namespace {

Fact flag(const char* key, const char* title, bool isSet) {
    return Fact{key, title, isSet}.says(isSet ? "yes" : "-");
}

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

Record describe(const MonitorResolution& resolution) {
    return {{"type", "TYPE", resolution.getInputType()},
            {"id", "ID", resolution.getResolutionId()},
            {"name", "NAME", resolution.getResolutionName()},
            {"width", "SIZE", resolution.getWidth()},
            Fact{"height", "", resolution.getHeight()}.after("x")};
}

Record describe(const LayoutModel& model) {
    return {{"id", "ID", model.getModelId()}, {"pictures", "PICTURES", model.getPicNumber()}};
}

Record describe(const SubWinDecodingAbility& group) {
    const VideoResolution& video = group.getMaxVideoResolution();
    return {Fact{"windows", "WINDOWS", group.getSubWinList()}.says(ranges(group.getSubWinList())),
            {"name", "LARGEST VIDEO", video.getResolutionName()},
            {"width", "SIZE", video.getVideoWidth()},
            Fact{"height", "", video.getVideoHeight()}.after("x")};
}

Record describe(const NetWorkingMode& mode) {
    return {{"type", "TYPE", mode.getWorkingType()},
            {"name", "MODE", mode.getWorkingName()},
            flag("ip", "IP", mode.getSupportIpConfigFlag()),
            flag("dhcpServer", "DHCP SERVER", mode.getSupportDHCPServerFlag()),
            flag("dhcpClient", "DHCP CLIENT", mode.getSupportDHCPClientFlag()),
            flag("dns", "DNS", mode.getSupportDNSConfigFlag()),
            flag("poe", "POE", mode.getSupportPOEConfigFlag())};
}

Record describe(const FileSystemAbility& system) {
    const int limit = system.getMaxPartitionSize();
    return {{"id", "ID", system.getFileSystemId()},
            {"name", "NAME", system.getName()},
            Fact{"maxPartitionGiB", "LARGEST PARTITION", limit}.says(
                limit == 0 ? "no limit" : std::to_string(limit) + " GiB"),
            flag("format", "FORMAT", system.getSupportFormatFlag()),
            flag("record", "RECORD", system.getSupportRecordFlag())};
}

// People see the names of one type in one row.
Record describe(const MonitorAbility& monitor) {
    const auto& resolutions = monitor.getMonitorResolutionList();
    std::map<int, std::string> names; // by type
    for (const MonitorResolution& resolution : resolutions) {
        append(names[resolution.getInputType()], resolution.getResolutionName());
    }
    std::vector<Record> rows;
    Fact id{"", "ID", monitor.getMonitorId()};
    for (const auto& [type, list] : names) {
        rows.push_back({id, {"", "TYPE", type}, {"", "RESOLUTIONS", list}});
        id = id.says(" ");
    }
    if (names.empty()) {
        rows.push_back({id, {"", "TYPE", ""}, {"", "RESOLUTIONS", "none"}});
    }
    return {{"id", "", monitor.getMonitorId()},
            {"resolutions", "", describeAll(resolutions, describe)},
            {"", "rows", rows}};
}

Record describe(const LayoutDecodingAbility& layout) {
    return {{"layout", "LAYOUT", layout.getLayoutModeID()},
            {"groups", "rows", describeAll(layout.getSubWinDecodingAbilityList(), describe)}};
}

Record describe(const NetworkCardAbility& card) {
    return {{"id", "CARD", card.getNetworkCardId()},
            {"modes", "rows", describeAll(card.getNetWorkingModeList(), describe)}};
}

Record describe(const WebAbility& web) {
    const auto& models = web.getLayoutAbility().getLayoutModelList();
    std::string pictures;
    for (const LayoutModel& model : models) {
        append(pictures, std::to_string(model.getPicNumber()));
    }
    return {
        {"playedBackAtOnce", "played back at once", web.getMaxPlaybackChannelNum()},
        {"loggedInAtOnce", "logged in at once", web.getMaxLoginNum()},
        Fact{"layouts", "pictures of its layouts", describeAll(models, describe)}.says(pictures)};
}

Record describe(const NVRDeviceAbility& device) {
    return {{"channels", "channels", device.getMaxChannelNumber()},
            {"decodedAtOnce", "decoded at once", device.getMaxDecodeAbility()},
            {"playedBackAtOnce", "played back at once", device.getMaxPlaybackChannelNumber()},
            Fact{"bitRate", "bit rate", device.getMaxBitRate()}.in("kbit/s"),
            {"disks", "disks", device.getDiskNumber()},
            {"dispatches", "dispatches", device.getMaxDispatchNumber()},
            {"alarmInputs", "alarm inputs", device.getAlarmInDeviceNumber()},
            {"alarmOutputs", "alarm outputs", device.getAlarmOutputDeviceNumber()},
            {"networkCards", "network cards", device.getNetworkAbility().getNetworkCardNum()},
            {"intercom", "intercom", device.getInterPhoneFlag()}};
}

// Section by section: a record or a list of records each.
Record describe(const DeviceAbilityCollector& abilities) {
    const NVRDeviceAbility& device = abilities.getDeviceAbility();
    return {
        {"general", "General", describe(device)},
        {"resolutions", "Display resolutions",
         describeAll(abilities.getMonitorResolutionList(), describe)},
        {"monitors", "Monitors", describeAll(device.getMonitorAbilityList(), describe)},
        {"layouts", "Layouts",
         describeAll(device.getLayoutAbility().getLayoutModelList(), describe)},
        {"decoding", "Decoding",
         describeAll(device.getDecodingAbility().getLayoutDecodingAbilityList(), describe)},
        {"network", "Network",
         describeAll(device.getNetworkAbility().getNetworkCardAbilityList(), describe)},
        {"web", "Web client", describe(device.getWebAbility())},
        {"fileSystems", "File systems", describeAll(device.getFileSystemAbilityList(), describe)}};
}

int run(const Settings& settings) {
    DeviceAbilityCollector abilities;
    readAbilities(abilities);
    const Record sections = describe(abilities);
    if (settings.json) {
        Console::printDocument(sections);
        return 0;
    }
    const char* gap = "";
    for (const Fact& section : sections) {
        Console::print(gap);
        Table heading;
        heading.addFacts({}, section.title);
        heading.print();
        Table table;
        if (const auto* records = std::get_if<std::vector<Record>>(&section.value)) {
            table.addList(*records);
        } else {
            table.addFacts(std::get<Record>(section.value));
        }
        table.print();
        gap = "\n";
    }
    return 0;
}

} // namespace

void readAbilities(DeviceAbilityCollector& abilities) {
    abilities.setAbilityConfigFileName(ConfigFileNameConst::getNVRAbilityFileName());
    abilities.setFileSystemFileName(ConfigFileNameConst::getFileSystemFileName());
    abilities.setHardwareConfigFileName(ConfigFileNameConst::getHardwareConfigFileName());
    if (abilities.init() == 0) {
        throw CommandError::ofBoard(
            "the abilities cannot be read: " +
            LogBook::takeCause("a reference in the ability document is wrong"));
    }
}

void addAbilities(Commands& commands) {
    commands.add("abilities", "Show what the recorder can do, by section", run);
}
