#include "board/check/Findings.h"
#include "board/documents/schema/AbilitySchema.h"
#include "board/documents/schema/HardwareSchema.h"
#include "board/documents/schema/MonitorSchema.h"

#include <map>
#include <set>
#include <utility>

namespace {

using Schema = AbilitySchema;

constexpr std::size_t MOST_CHOICES = 10; // of a message

std::string text(int number) { return std::to_string(number); }

std::string counted(int number, const std::string& what) {
    return text(number) + " " + what + (number == 1 ? "" : "s");
}

/// "FIELD is 4"
std::string is(const FieldSchema& field, int value) { return field.name + (" is " + text(value)); }

std::vector<XmlElement> items(const XmlElement& parent, const ElementSchema& section) {
    return parent.children(section.name, XmlElement::ITEM);
}

/// One ability document. What refers to what, and what counts what, is here and nowhere else.
class Abilities {
public:
    Abilities(Findings& findings, const XmlElement& root) : m_Findings(findings), m_Root(root) {}

    void check() {
        readResolutions();
        checkMonitors();
        checkLayouts();
        checkNetwork();
        checkPlayback();
    }

    void checkAlarms(const XmlElement& hardware) const {
        checkCount(Schema::ALARM_IN_NUMBER, hardware, HardwareSchema::INPUTS);
        checkCount(Schema::ALARM_OUT_NUMBER, hardware, HardwareSchema::OUTPUTS);
    }

    void checkParams(const XmlElement& monitors) const {
        for (const XmlElement& item : items(monitors, MonitorSchema::SECTION)) {
            if (const std::optional<int> id = item.numberIfGood(MonitorSchema::MONITOR_ID)) {
                checkParam(item, *id);
            }
        }
    }

private:
    /// A display resolution is named by its input type and its id.
    using Resolution = std::pair<int, int>;
    using Resolutions = std::set<Resolution>;

    void readResolutions() {
        for (const XmlElement& item : items(m_Root, Schema::RESOLUTIONS)) {
            const std::optional<int> type = item.numberIfGood(Schema::RESOLUTION_TYPE);
            const std::optional<int> id = item.numberIfGood(Schema::RESOLUTION_ID);
            if (type && id) {
                m_Resolutions.emplace(*type, *id);
            }
        }
    }

    void checkMonitors() {
        const bool canRefer = !m_Root.children(Schema::RESOLUTIONS.name).empty();
        for (const XmlElement& monitor : m_Root.children(Schema::MONITORS.name)) {
            Resolutions resolutions;
            for (const XmlElement& group : monitor.children(Schema::GROUP.name)) {
                const std::optional<int> type = group.numberIfGood(Schema::GROUP_TYPE);
                for (const XmlElement& item : group.children(XmlElement::ITEM)) {
                    const std::optional<int> id = item.numberIfGood(Schema::REFERENCE_ID);
                    if (type && id) {
                        resolutions.emplace(*type, *id);
                    }
                    if (type && id && canRefer) {
                        checkReference(item, {*type, *id});
                    }
                }
            }
            if (const std::optional<int> id = monitor.numberIfGood(Schema::MONITOR_ID)) {
                m_Monitors.emplace(*id, resolutions);
            }
        }
    }

    void checkReference(const XmlElement& item, const Resolution& resolution) {
        if (m_Resolutions.count(resolution) == 0) {
            m_Findings.error(item, "there is no resolution with type " + text(resolution.first) +
                                       ", id " + text(resolution.second) +
                                       choiceOf(resolution.first));
        }
    }

    /// What else of this type a reference could name.
    std::string choiceOf(int type) const {
        std::string ids;
        std::size_t count = 0;
        for (const Resolution& resolution : m_Resolutions) {
            if (resolution.first == type && count++ < MOST_CHOICES) {
                ids += (ids.empty() ? "" : ", ") + text(resolution.second);
            }
        }
        return ids.empty() ? ", nor any of this type"
                           : "; this type has " + ids + (count > MOST_CHOICES ? ", ..." : "");
    }

    void checkLayouts() {
        std::map<int, int> pictures; // by layout
        for (const XmlElement& item : items(m_Root, Schema::LAYOUTS)) {
            if (const std::optional<int> id = item.numberIfGood(Schema::LAYOUT_ID)) {
                pictures.emplace(*id, item.numberIfGood(Schema::PICTURES).value_or(0));
            }
        }
        for (const XmlElement& layout :
             m_Root.children(Schema::DECODING.name, Schema::DECODED.name)) {
            const std::optional<int> id = layout.numberIfGood(Schema::DECODED_LAYOUT);
            const auto found = id ? pictures.find(*id) : pictures.end();
            if (found != pictures.end()) {
                checkWindows(layout, found->second);
            } else if (id && !m_Root.children(Schema::LAYOUTS.name).empty()) {
                m_Findings.warn(layout, Schema::LAYOUTS.name +
                                            (" has no layout with modelId " + text(*id)));
            }
        }
    }

    void checkWindows(const XmlElement& layout, int pictures) {
        std::map<int, const XmlElement*> groups; // by window, the first that has it
        const std::vector<XmlElement> all = layout.children(Schema::WINDOW_GROUP.name);
        for (const XmlElement& group : all) {
            for (const XmlElement& item : items(group, Schema::WINDOWS)) {
                const std::optional<int> window = item.numberIfGood(Schema::WINDOW);
                if (window && *window >= pictures && pictures > 0) {
                    m_Findings.warn(item, "window " + text(*window) + " of a layout of " +
                                              counted(pictures, "picture") + ", counted from 0");
                }
                if (window && groups.emplace(*window, &group).first->second != &group) {
                    m_Findings.warn(item, "window " + text(*window) +
                                              " is also in the group in line " +
                                              text(groups[*window]->line()));
                }
            }
        }
    }

    void checkNetwork() const {
        const std::optional<int> stated = number(Schema::NETWORK, Schema::CARD_NUMBER);
        const int listed =
            static_cast<int>(m_Root.children(Schema::NETWORK.name, Schema::CARD.name).size());
        if (stated && *stated != listed) {
            m_Findings.warn(m_Root.child(Schema::NETWORK.name),
                            is(Schema::CARD_NUMBER, *stated) + ", but it lists " +
                                counted(listed, std::string(Schema::CARD.name) + " element"));
        }
    }

    void checkPlayback() const {
        const std::optional<int> channels = number(Schema::CHANNELS, Schema::CHANNEL_NUMBER);
        const std::optional<int> playback = number(Schema::PLAYBACK, Schema::PLAYBACK_NUMBER);
        if (channels && playback && *playback > *channels) {
            m_Findings.warn(m_Root.child(Schema::PLAYBACK.name),
                            "more channels are played back, " + text(*playback) +
                                ", than there are, " + text(*channels));
        }
    }

    void checkCount(const FieldSchema& field, const XmlElement& hardware,
                    const ElementSchema& section) const {
        const std::optional<int> stated = number(Schema::ALARMS, field);
        const int listed = static_cast<int>(items(hardware, section).size());
        if (stated && *stated != listed && !hardware.children(section.name).empty()) {
            m_Findings.warn(m_Root.child(Schema::ALARMS.name),
                            is(field, *stated) + ", but " + section.name + " in " +
                                hardware.file() + " has " + counted(listed, "item"));
        }
    }

    void checkParam(const XmlElement& item, int id) const {
        const auto monitor = m_Monitors.find(id);
        const std::optional<int> type = item.numberIfGood(MonitorSchema::TYPE);
        const std::optional<int> resolution = item.numberIfGood(MonitorSchema::RESOLUTION_ID);
        if (monitor == m_Monitors.end()) {
            m_Findings.warn(item, "the ability document has no monitor with monitorId " + text(id));
        } else if (type && resolution && monitor->second.count({*type, *resolution}) == 0) {
            m_Findings.warn(item, "in the ability document, monitor " + text(id) +
                                      " has no resolution of type " + text(*type) + " with id " +
                                      text(*resolution));
        }
    }

    /// Of a field in a section of the document; empty without the section.
    std::optional<int> number(const ElementSchema& section, const FieldSchema& field) const {
        const std::vector<XmlElement> sections = m_Root.children(section.name);
        return sections.empty() ? std::nullopt : sections.front().numberIfGood(field);
    }

    Findings& m_Findings;
    const XmlElement m_Root;
    Resolutions m_Resolutions;
    std::map<int, Resolutions> m_Monitors; ///< the resolutions of each, by its id
};

} // namespace

void checkAbilities(Findings& findings, const XmlElement& abilities,
                    const std::optional<XmlElement>& hardware,
                    const std::optional<XmlElement>& monitors) {
    Abilities check(findings, abilities);
    check.check();
    if (hardware) {
        check.checkAlarms(*hardware);
    }
    if (monitors) {
        check.checkParams(*monitors);
    }
}
