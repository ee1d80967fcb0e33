#pragma once

#include "board/documents/schema/Schema.h"

/// The parameters of the monitors.
struct MonitorSchema {
    using Field = FieldSchema;

    static constexpr Field MONITOR_ID =
        Field::number("monitorId", "the display output, as in `MonitorAbility`").required().key();
    static constexpr Field TYPE =
        Field::number("type", "the input type of a resolution of the abilities").expected();
    static constexpr Field RESOLUTION_ID =
        Field::number("resolutionId",
                      "with the type, names a resolution; not checked against the abilities")
            .expected()
            .from(NOT_NEGATIVE);
    static constexpr Field ENABLED = Field::flag("enabled", "the output is in use");
    static constexpr Field X = Field::number("x", "left edge of the picture, pixels");
    static constexpr Field Y = Field::number("y", "upper edge of the picture, pixels");
    static constexpr Field WIDTH =
        Field::number("width", "width of the picture, pixels").from(NOT_NEGATIVE);
    static constexpr Field HEIGHT =
        Field::number("height", "height of the picture, pixels").from(NOT_NEGATIVE);
    static constexpr Field REFRESH_RATE =
        Field::number("refreshRate", "hertz; 0: the display's own").from(NOT_NEGATIVE);
    static constexpr Field BRIGHTNESS =
        Field::number("brightness", "per cent").from({0, 100}).otherwise(50);

    static constexpr Field FIELDS[] = {MONITOR_ID, TYPE,  RESOLUTION_ID, ENABLED,      X,
                                       Y,          WIDTH, HEIGHT,        REFRESH_RATE, BRIGHTNESS};
    static constexpr ElementSchema ITEMS[] = {{"item", ElementSchema::ANY_NUMBER, "", FIELDS}};
    static constexpr ElementSchema SECTION{
        "Monitor", ElementSchema::REQUIRED, "one item for each", {}, ITEMS};
    static constexpr ElementSchema SECTIONS[] = {SECTION};

    static constexpr DocumentSchema DOCUMENT{
        "monitor parameters",
        "/mnt/mtd/code/config_file/MonitorParamConfig.xml",
        "monitor parameters",
        "no monitor has parameters until some are set",
        true,
        "every operation fails",
        {"MonitorParamConfig", ElementSchema::REQUIRED, "", {}, SECTIONS}};
};
