#pragma once

#include "board/documents/schema/Schema.h"

/// The alarm lines.
struct HardwareSchema {
    using Field = FieldSchema;

    // In the order of GPIOLineSettings::Bias and Drive.
    static constexpr const char* BIASES[] = {"pull-up", "pull-down", "disabled"};
    static constexpr const char* DRIVES[] = {"push-pull", "open-drain", "open-source"};

    static constexpr Field ID =
        Field::number("id", "the number under which the application knows the input or output")
            .required()
            .key();
    static constexpr Field GROUP =
        Field::number("group", "the bank: the entry of that name in `/dev/gpiodrv`")
            .required()
            .from({0, 32767});
    static constexpr Field BIT_POSITION =
        Field::number("bitPosition", "the line in the bank").required().from({0, 65535});
    static constexpr Field VALID_LEVEL =
        Field::number("validLevel", "the level at which an input is in alarm, and to which a "
                                    "triggered output is driven")
            .required()
            .from({0, 1});
    static constexpr Field NAME =
        Field::text("name", "for people: `nvrhw` shows it with the line").otherwise("none");
    static constexpr Field DEBOUNCE =
        Field::number("debounce", "inputs: milliseconds for which a new level must hold before it "
                                  "counts")
            .from({0, 10000})
            .otherwise("0: every change counts");
    static constexpr Field BIAS =
        Field::choice("bias", "what holds the line while nobody drives it", BIASES)
            .otherwise("as the board has it");
    static constexpr Field DRIVE =
        Field::choice("drive", "outputs: which levels are driven", DRIVES)
            .otherwise("as the board has it");

    static constexpr Field INPUT[] = {
        ID,   GROUP,    BIT_POSITION, VALID_LEVEL,
        NAME, DEBOUNCE, BIAS,         DRIVE.doubted("an input does not follow drive")};
    static constexpr Field OUTPUT[] = {
        ID,          GROUP, BIT_POSITION,
        VALID_LEVEL, NAME,  DEBOUNCE.doubted("an output does not follow debounce"),
        BIAS,        DRIVE};

    static constexpr ElementSchema INPUT_ITEMS[] = {{"item", ElementSchema::ANY_NUMBER, "", INPUT}};
    static constexpr ElementSchema OUTPUT_ITEMS[] = {
        {"item", ElementSchema::ANY_NUMBER, "", OUTPUT}};

    static constexpr ElementSchema INPUTS{
        "GPIOAlarmIn", ElementSchema::REQUIRED, "the alarm inputs", {}, INPUT_ITEMS, "", true};
    static constexpr ElementSchema OUTPUTS{
        "GPIOAlarmOut", ElementSchema::REQUIRED, "the alarm outputs", {}, OUTPUT_ITEMS, "", true};
    static constexpr ElementSchema SECTIONS[] = {INPUTS, OUTPUTS};

    static constexpr DocumentSchema DOCUMENT{
        "hardware configuration",
        "/hd1/program/config/hardwareConfig.xml",
        "alarm lines",
        "`start()` raises `XQRuntimeError`",
        false,
        "the section fails",
        {"HardwareConfig", ElementSchema::REQUIRED, "", {}, SECTIONS}};
};
