#include "AbilityCheck.h"

#include "ElementPath.h"

namespace {

constexpr std::size_t MOST_CHOICES = 10; // of a message

std::string text(int number) { return std::to_string(number); }

std::string counted(int number, const std::string& what) {
    return text(number) + " " + what + (number == 1 ? "" : "s");
}

} // namespace

AbilityCheck::AbilityCheck(Findings& findings, const XmlElement& root)
    : m_Findings(findings), m_Root(root) {}

void AbilityCheck::check() {
    readResolutions();
    checkMonitors();
    checkLayouts();
    checkNetwork();
    checkPlayback();
}

void AbilityCheck::readResolutions() {
    for (const XmlElement& item : ElementPath::itemsOf(m_Root, "MonitorResolution")) {
        const std::optional<int> type = ElementPath::numberOf(item, "type");
        const std::optional<int> id = ElementPath::numberOf(item, "id");
        if (type && id) {
            m_Resolutions.emplace(*type, *id);
        }
    }
}

void AbilityCheck::checkMonitors() {
    const bool canRefer = !m_Root.children("MonitorResolution").empty();
    for (const XmlElement& monitor : m_Root.children("MonitorAbility")) {
        Resolutions resolutions;
        for (const XmlElement& group : monitor.children("MonitorResolution")) {
            const std::optional<int> type = ElementPath::numberOf(group, "monitorType");
            for (const XmlElement& item : group.children(XmlElement::ITEM)) {
                const std::optional<int> id = ElementPath::numberOf(item, "monitorResolutionId");
                if (type && id) {
                    resolutions.emplace(*type, *id);
                }
                if (type && id && canRefer) {
                    checkReference(item, {*type, *id});
                }
            }
        }
        if (const std::optional<int> id = ElementPath::numberOf(monitor, "monitorId")) {
            m_Monitors.emplace(*id, resolutions);
        }
    }
}

void AbilityCheck::checkReference(const XmlElement& item, const Resolution& resolution) {
    if (m_Resolutions.count(resolution) == 0) {
        m_Findings.error(item, "there is no resolution with type " + text(resolution.first) +
                                   ", id " + text(resolution.second) + choiceOf(resolution.first));
    }
}

/// What else of this type a reference could name.
std::string AbilityCheck::choiceOf(int type) const {
    std::string ids;
    std::size_t count = 0;
    for (const Resolution& resolution : m_Resolutions) {
        if (resolution.first == type && count++ < MOST_CHOICES) {
            ids += (ids.empty() ? "" : ", ") + text(resolution.second);
        }
    }
    if (ids.empty()) {
        return ", nor any of this type";
    }
    return "; this type has " + ids + (count > MOST_CHOICES ? ", ..." : "");
}

void AbilityCheck::checkLayouts() {
    std::map<int, int> pictures; // by layout
    for (const XmlElement& item : ElementPath::itemsOf(m_Root, "LayoutAbility")) {
        const std::optional<int> id = ElementPath::numberOf(item, "modelId");
        if (id) {
            pictures.emplace(*id, ElementPath::numberOf(item, "picNumber").value_or(0));
        }
    }
    for (const XmlElement& layout :
         ElementPath::childrenOf(m_Root, "DecodingAbility", "LayoutDecodingAbility")) {
        const std::optional<int> id = ElementPath::numberOf(layout, "layoutmodeId");
        const auto found = id ? pictures.find(*id) : pictures.end();
        if (found != pictures.end()) {
            checkWindows(layout, found->second);
        } else if (id && !m_Root.children("LayoutAbility").empty()) {
            m_Findings.warn(layout, "LayoutAbility has no layout with modelId " + text(*id));
        }
    }
}

void AbilityCheck::checkWindows(const XmlElement& layout, int pictures) {
    std::map<int, const XmlElement*> groups; // by window, the first that has it
    const std::vector<XmlElement> all = layout.children("SubWinDecodingAbility");
    for (const XmlElement& group : all) {
        for (const XmlElement& item : ElementPath::itemsOf(group, "SubWinList")) {
            const std::optional<int> window = ElementPath::numberOf(item, "winId");
            if (window && *window >= pictures && pictures > 0) {
                m_Findings.warn(item, "window " + text(*window) + " of a layout of " +
                                          counted(pictures, "picture") + ", counted from 0");
            }
            if (window && groups.emplace(*window, &group).first->second != &group) {
                m_Findings.warn(item, "window " + text(*window) + " is also in the group in line " +
                                          text(groups[*window]->line()));
            }
        }
    }
}

void AbilityCheck::checkNetwork() const {
    for (const XmlElement& network : m_Root.children("NetworkAbility")) {
        const int listed = static_cast<int>(network.children("NetworkCard").size());
        const std::optional<int> stated = ElementPath::numberOf(network, "networkCardNum");
        if (stated && *stated != listed) {
            m_Findings.warn(network, "networkCardNum is " + text(*stated) + ", but it lists " +
                                         counted(listed, "NetworkCard element"));
        }
        return; // only the first is read
    }
}

void AbilityCheck::checkPlayback() const {
    const std::optional<int> channels =
        ElementPath::numberOf(m_Root, "ChannelAbility", "channelNumber");
    const std::optional<int> playback =
        ElementPath::numberOf(m_Root, "MaxPlaybackChannelNumber", "value");
    if (channels && playback && *playback > *channels) {
        m_Findings.warn(m_Root.child("MaxPlaybackChannelNumber"),
                        "more channels are played back, " + text(*playback) + ", than there are, " +
                            text(*channels));
    }
}

void AbilityCheck::checkAlarms(const XmlElement& hardware) const {
    const std::pair<const char*, const char*> numbers[] = {
        {"alarmInDeviceNumber", "GPIOAlarmIn"}, {"alarmOutputDeviceNumber", "GPIOAlarmOut"}};
    for (const auto& [attribute, section] : numbers) {
        const std::optional<int> stated = ElementPath::numberOf(m_Root, "AlarmAbility", attribute);
        const int listed = static_cast<int>(ElementPath::itemsOf(hardware, section).size());
        if (stated && *stated != listed && !hardware.children(section).empty()) {
            m_Findings.warn(m_Root.child("AlarmAbility"),
                            attribute + (" is " + text(*stated)) + ", but " + section + " in " +
                                hardware.file() + " has " + counted(listed, "item"));
        }
    }
}
