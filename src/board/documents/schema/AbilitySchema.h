#pragma once

#include "board/documents/schema/Schema.h"

/// What the recorder can do. Its reader, src/ability, takes every number, and what is missing or
/// does not convert as 0, false or empty.
struct AbilitySchema {
    using Field = FieldSchema;
    using Element = ElementSchema;

    static constexpr Range FIXED_NAME{0, 63}; ///< bytes; a longer one is cut

    // Sections that are numbers alone.
    static constexpr Field CHANNEL_NUMBER = Field::count("channelNumber", "video channels");
    static constexpr Field CHANNEL_FIELDS[] = {
        CHANNEL_NUMBER, Field::count("maxDecodeAbility", "channels decoded at once"),
        Field::count("maxBitRate", "kbit/s over all channels"),
        Field::count("diskNumber", "disks")};
    static constexpr Element CHANNELS{"ChannelAbility", Element::REQUIRED, "channels and disks",
                                      CHANNEL_FIELDS};

    static constexpr Field DISPATCH_FIELDS[] = {
        Field::count("MaxDispatchNum", "maximum dispatch number")};
    static constexpr Element DISPATCH{
        "DispatchAbility",      Element::OPTIONAL, "dispatching", DISPATCH_FIELDS, {},
        "`MaxDispatchNum` is 0"};

    static constexpr Field PLAYBACK_NUMBER = Field::count("value", "channels played back at once");
    static constexpr Field PLAYBACK_FIELDS[] = {PLAYBACK_NUMBER};
    static constexpr Element PLAYBACK{"MaxPlaybackChannelNumber", Element::REQUIRED, "playback",
                                      PLAYBACK_FIELDS};

    static constexpr Field INTERPHONE_FIELDS[] = {
        Field::flag("InterPhoneFlag", "it has an intercom").expected()};
    static constexpr Element INTERPHONE{"InterPhoneFlag", Element::REQUIRED, "the intercom",
                                        INTERPHONE_FIELDS};

    static constexpr Field ALARM_IN_NUMBER = Field::count("alarmInDeviceNumber", "alarm inputs");
    static constexpr Field ALARM_OUT_NUMBER =
        Field::count("alarmOutputDeviceNumber", "alarm outputs");
    static constexpr Field ALARM_FIELDS[] = {ALARM_IN_NUMBER, ALARM_OUT_NUMBER};
    static constexpr Element ALARMS{"AlarmAbility", Element::REQUIRED, "alarm lines", ALARM_FIELDS};

    // Resolutions, and the display outputs that refer to them.
    static constexpr Field RESOLUTION_TYPE =
        Field::number("type", "an input type; with `id`, it names the resolution, and the first of "
                              "several equal ones counts")
            .expected()
            .key();
    static constexpr Field RESOLUTION_ID =
        Field::number("id", "the number in its input type").expected().key();
    static constexpr Field RESOLUTION_FIELDS[] = {
        RESOLUTION_TYPE, RESOLUTION_ID, Field::text("name", "for people").mostly(FIXED_NAME),
        Field::number("width", "pixels").expected().mostly(POSITIVE),
        Field::number("height", "pixels").expected().mostly(POSITIVE)};
    static constexpr Element RESOLUTION_ITEMS[] = {
        {"item", Element::ANY_NUMBER, "", RESOLUTION_FIELDS}};
    static constexpr Element RESOLUTIONS{
        "MonitorResolution", Element::REQUIRED, "every resolution", {}, RESOLUTION_ITEMS};

    static constexpr Field REFERENCE_ID =
        Field::number("monitorResolutionId",
                      "a resolution above of that type; one that does not exist **ends the "
                      "process**, without a line that names it")
            .expected()
            .key();
    static constexpr Field REFERENCE_FIELDS[] = {REFERENCE_ID};
    static constexpr Element REFERENCES[] = {{"item", Element::ANY_NUMBER, "", REFERENCE_FIELDS}};
    static constexpr Field GROUP_TYPE =
        Field::number("monitorType", "the input type of the references in it").expected().key();
    static constexpr Field GROUP_FIELDS[] = {GROUP_TYPE};
    static constexpr Element GROUP{"MonitorResolution", Element::ANY_NUMBER, "", GROUP_FIELDS,
                                   REFERENCES};
    static constexpr Element GROUPS[] = {GROUP};
    static constexpr Field MONITOR_ID =
        Field::number("monitorId", "the display output").expected().key();
    static constexpr Field MONITOR_FIELDS[] = {MONITOR_ID};
    static constexpr Element MONITORS{"MonitorAbility", Element::ANY_NUMBER,
                                      "one for each display output", MONITOR_FIELDS, GROUPS};

    // Layouts, and what can be decoded in them.
    static constexpr Field LAYOUT_ID = Field::number("modelId", "the layout").expected().key();
    static constexpr Field PICTURES =
        Field::number("picNumber", "the pictures it shows").expected().mostly(POSITIVE);
    static constexpr Field LAYOUT_FIELDS[] = {LAYOUT_ID, PICTURES};
    static constexpr Element LAYOUT_ITEMS[] = {{"item", Element::ANY_NUMBER, "", LAYOUT_FIELDS}};
    static constexpr Element LAYOUTS{
        "LayoutAbility", Element::REQUIRED, "layouts of the local display", {}, LAYOUT_ITEMS};

    static constexpr Field LARGEST_FIELDS[] = {
        Field::number("width", "pixels").expected().mostly(POSITIVE),
        Field::number("height", "pixels").expected().mostly(POSITIVE),
        Field::text("resolutionname", "for people")};
    static constexpr Field WINDOW = Field::count("winId", "a sub-window, from 0").key();
    static constexpr Field WINDOW_FIELDS[] = {WINDOW};
    static constexpr Element WINDOW_ITEMS[] = {{"item", Element::ANY_NUMBER, "", WINDOW_FIELDS}};
    static constexpr Element WINDOWS{
        "SubWinList", Element::REQUIRED, "the windows of the group", {}, WINDOW_ITEMS};
    static constexpr Element WINDOW_GROUP_PARTS[] = {
        {"MaxVideoResolution", Element::REQUIRED, "the limit", LARGEST_FIELDS}, WINDOWS};
    static constexpr Element WINDOW_GROUP{"SubWinDecodingAbility",
                                          Element::ANY_NUMBER,
                                          "a group of sub-windows with one limit",
                                          {},
                                          WINDOW_GROUP_PARTS};
    static constexpr Element WINDOW_GROUPS[] = {WINDOW_GROUP};
    static constexpr Field DECODED_LAYOUT =
        Field::number("layoutmodeId", "the layout, by its `modelId`; not checked").expected().key();
    static constexpr Field DECODED_FIELDS[] = {DECODED_LAYOUT};
    static constexpr Element DECODED{"LayoutDecodingAbility", Element::ANY_NUMBER, "",
                                     DECODED_FIELDS, WINDOW_GROUPS};
    static constexpr Element DECODED_LIST[] = {DECODED};
    static constexpr Element DECODING{
        "DecodingAbility", Element::REQUIRED, "what each layout can decode", {}, DECODED_LIST};

    // Network cards.
    static constexpr Field MODE_FIELDS[] = {
        Field::number("networkingType", "a working mode").expected().key(),
        Field::text("netWorkingModeName", "for people").mostly(FIXED_NAME),
        Field::flag("supportIPCConfigFlag", "the mode lets a user set the address"),
        Field::flag("supportDHCPServerFlag", "the mode can serve addresses"),
        Field::flag("supportDHCPClientFlag", "the mode can ask for its address"),
        Field::flag("supportDNSConfigFlag", "the mode lets a user set the name server"),
        Field::flag("supportPOEConfigFlag", "the mode can power what is plugged in")};
    static constexpr Element MODES[] = {{"item", Element::ANY_NUMBER, "", MODE_FIELDS}};
    static constexpr Field CARD_FIELDS[] = {
        Field::number("networkcardID", "the card").expected().key()};
    static constexpr Element CARD{"NetworkCard", Element::ANY_NUMBER, "", CARD_FIELDS, MODES};
    static constexpr Element CARDS[] = {CARD};
    static constexpr Field CARD_NUMBER =
        Field::count("networkCardNum", "how many there are, as a number");
    static constexpr Field NETWORK_FIELDS[] = {CARD_NUMBER};
    static constexpr Element NETWORK{"NetworkAbility", Element::REQUIRED, "network cards",
                                     NETWORK_FIELDS, CARDS};

    // The web client.
    static constexpr Field WEB_FIELDS[] = {
        Field::count("MaxPlaybackChannelNumber", "channels the web client plays back at once"),
        Field::count("MaxLoginNum", "users logged in at once")};
    static constexpr Element WEB_PARTS[] = {
        {"LayoutAbility", Element::REQUIRED, "layouts of the web client", {}, LAYOUT_ITEMS}};
    static constexpr Element WEB{
        "WebAbility",     Element::OPTIONAL,
        "the web client", WEB_FIELDS,
        WEB_PARTS,        "both numbers are 1, the layouts 0 (1 picture) and 1 (4 pictures)"};

    static constexpr Element SECTIONS[] = {CHANNELS, DISPATCH,    PLAYBACK, INTERPHONE,
                                           ALARMS,   RESOLUTIONS, MONITORS, LAYOUTS,
                                           DECODING, NETWORK,     WEB};

    static constexpr DocumentSchema DOCUMENT{"device ability",
                                             "/hd1/program/config/NVRAbility.xml",
                                             "abilities",
                                             "the process ends with status 0",
                                             false,
                                             "the process ends",
                                             {"NVRAbility", Element::REQUIRED, "", {}, SECTIONS}};
};
