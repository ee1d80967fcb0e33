#include "DocumentRules.h"

#include <limits>

namespace {

using Attribute = AttributeRule;
using Element = ElementRule;
using Range = XmlElement::Range;

constexpr int MOST = std::numeric_limits<int>::max();
constexpr Range ANY{};
constexpr Range NOT_NEGATIVE{0, MOST};
constexpr Range POSITIVE{1, MOST};
constexpr Range DEBOUNCES{0, 10000}; // milliseconds
constexpr Range FIXED_NAME{0, 63};   // a longer one is cut

/// A number that the reader takes whatever it is.
Attribute number(const char* name, Range likely) {
    return {name, Attribute::NUMBER, Attribute::EXPECTED, ANY, likely};
}

Attribute bounded(const char* name, Range accepted) {
    return {name, Attribute::NUMBER, Attribute::REQUIRED, accepted};
}

Attribute flag(const char* name) { return {name, Attribute::FLAG, Attribute::OPTIONAL}; }

Element item(std::vector<Attribute> attributes, std::vector<std::string> key) {
    return {XmlElement::ITEM, Element::ANY_NUMBER, std::move(attributes), {}, std::move(key)};
}

Attribute choice(const char* name, std::vector<std::string> choices) {
    return {name, Attribute::CHOICE, Attribute::OPTIONAL, ANY, ANY, std::move(choices)};
}

Element lines(const char* section, bool areInputs) {
    const Attribute name{"name", Attribute::TEXT, Attribute::OPTIONAL};
    const Attribute bias = choice("bias", {"pull-up", "pull-down", "disabled"});
    Attribute debounce{"debounce", Attribute::NUMBER, Attribute::OPTIONAL, DEBOUNCES};
    Attribute drive = choice("drive", {"push-pull", "open-drain", "open-source"});
    (areInputs ? drive : debounce).doubt =
        areInputs ? "an input does not follow drive" : "an output does not follow debounce";
    const Element line = item({bounded("id", ANY), bounded("group", DocumentRules::GROUPS),
                               bounded("bitPosition", DocumentRules::BIT_POSITIONS),
                               bounded("validLevel", {0, 1}), name, debounce, bias, drive},
                              {"id"});
    return {section, Element::REQUIRED, {}, {line}, {}, true};
}

Element layouts() {
    const Element layout =
        item({number("modelId", ANY), number("picNumber", POSITIVE)}, {"modelId"});
    return {"LayoutAbility", Element::REQUIRED, {}, {layout}};
}

Element resolutions() {
    const Attribute name{"name", Attribute::TEXT, Attribute::OPTIONAL, ANY, FIXED_NAME};
    const Element resolution = item({number("id", ANY), number("type", ANY), name,
                                     number("width", POSITIVE), number("height", POSITIVE)},
                                    {"type", "id"});
    return {"MonitorResolution", Element::REQUIRED, {}, {resolution}};
}

Element monitorAbility() {
    const Element reference = item({number("monitorResolutionId", ANY)}, {"monitorResolutionId"});
    const Element group{"MonitorResolution",
                        Element::ANY_NUMBER,
                        {number("monitorType", ANY)},
                        {reference},
                        {"monitorType"}};
    return {
        "MonitorAbility", Element::ANY_NUMBER, {number("monitorId", ANY)}, {group}, {"monitorId"}};
}

Element decoding() {
    const Attribute name{"resolutionname", Attribute::TEXT, Attribute::OPTIONAL};
    const Element largest{"MaxVideoResolution",
                          Element::REQUIRED,
                          {number("width", POSITIVE), number("height", POSITIVE), name}};
    const Element windows{
        "SubWinList", Element::REQUIRED, {}, {item({number("winId", NOT_NEGATIVE)}, {"winId"})}};
    const Element group{"SubWinDecodingAbility", Element::ANY_NUMBER, {}, {largest, windows}};
    const Element layout{"LayoutDecodingAbility",
                         Element::ANY_NUMBER,
                         {number("layoutmodeId", ANY)},
                         {group},
                         {"layoutmodeId"}};
    return {"DecodingAbility", Element::REQUIRED, {}, {layout}};
}

Element network() {
    const Attribute name{"netWorkingModeName", Attribute::TEXT, Attribute::OPTIONAL, ANY,
                         FIXED_NAME};
    const Element mode = item({number("networkingType", ANY), name, flag("supportIPCConfigFlag"),
                               flag("supportDHCPServerFlag"), flag("supportDHCPClientFlag"),
                               flag("supportDNSConfigFlag"), flag("supportPOEConfigFlag")},
                              {"networkingType"});
    const Element card{"NetworkCard",
                       Element::ANY_NUMBER,
                       {number("networkcardID", ANY)},
                       {mode},
                       {"networkcardID"}};
    return {"NetworkAbility", Element::REQUIRED, {number("networkCardNum", NOT_NEGATIVE)}, {card}};
}

/// The sections that have no lists.
std::vector<Element> numbers() {
    const auto count = [](const char* name) { return number(name, NOT_NEGATIVE); };
    return {
        {"ChannelAbility",
         Element::REQUIRED,
         {count("channelNumber"), count("maxDecodeAbility"), count("maxBitRate"),
          count("diskNumber")}},
        {"DispatchAbility", Element::OPTIONAL, {count("MaxDispatchNum")}},
        {"MaxPlaybackChannelNumber", Element::REQUIRED, {count("value")}},
        {"InterPhoneFlag",
         Element::REQUIRED,
         {{"InterPhoneFlag", Attribute::FLAG, Attribute::EXPECTED}}},
        {"AlarmAbility",
         Element::REQUIRED,
         {count("alarmInDeviceNumber"), count("alarmOutputDeviceNumber")}},
    };
}

Element abilityDocument() {
    std::vector<Element> sections = numbers();
    const Element web{
        "WebAbility",
        Element::OPTIONAL,
        {number("MaxPlaybackChannelNumber", NOT_NEGATIVE), number("MaxLoginNum", NOT_NEGATIVE)},
        {layouts()}};
    sections.insert(sections.end(),
                    {resolutions(), monitorAbility(), layouts(), decoding(), network(), web});
    return {"NVRAbility", Element::REQUIRED, {}, sections};
}

Element fileSystemDocument() {
    const Attribute name{"name", Attribute::TEXT, Attribute::REQUIRED};
    const Attribute size{"maxPartitionSize", Attribute::NUMBER, Attribute::OPTIONAL, NOT_NEGATIVE};
    const Element system =
        item({bounded("id", ANY), name, size, flag("supportFormatFlag"), flag("supportRecordFlag")},
             {"id"});
    const Element section{"FileSystemAbility", Element::REQUIRED, {}, {system}};
    return {"FileSystemAbilityConfig", Element::REQUIRED, {}, {section}};
}

Element monitorDocument() {
    const auto optional = [](const char* name, Range accepted) {
        return Attribute{name, Attribute::NUMBER, Attribute::OPTIONAL, accepted};
    };
    const Attribute resolution{"resolutionId", Attribute::NUMBER, Attribute::EXPECTED,
                               NOT_NEGATIVE};
    const Element monitor =
        item({bounded("monitorId", ANY), number("type", ANY), resolution, flag("enabled"),
              optional("x", ANY), optional("y", ANY), optional("width", NOT_NEGATIVE),
              optional("height", NOT_NEGATIVE), optional("refreshRate", NOT_NEGATIVE),
              optional("brightness", {0, 100})},
             {"monitorId"});
    return {"MonitorParamConfig",
            Element::REQUIRED,
            {},
            {{"Monitor", Element::REQUIRED, {}, {monitor}}}};
}

} // namespace

const ElementRule& DocumentRules::hardware() {
    static const Element rule{"HardwareConfig",
                              Element::REQUIRED,
                              {},
                              {lines("GPIOAlarmIn", true), lines("GPIOAlarmOut", false)}};
    return rule;
}

const ElementRule& DocumentRules::ability() {
    static const Element rule = abilityDocument();
    return rule;
}

const ElementRule& DocumentRules::fileSystems() {
    static const Element rule = fileSystemDocument();
    return rule;
}

const ElementRule& DocumentRules::clock() {
    static const Element rule{"RTCDriverConfig",
                              Element::REQUIRED,
                              {},
                              {{"Device",
                                Element::SINGLE,
                                {{"path", Attribute::TEXT, Attribute::REQUIRED}, flag("utc")}}}};
    return rule;
}

const ElementRule& DocumentRules::monitors() {
    static const Element rule = monitorDocument();
    return rule;
}
