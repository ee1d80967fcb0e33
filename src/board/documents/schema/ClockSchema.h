#pragma once

#include "board/documents/schema/Schema.h"

/// Which device is the board's clock.
struct ClockSchema {
    using Field = FieldSchema;

    static constexpr char DEFAULT_DEVICE[] = "/dev/rtc0"; ///< in UTC

    static constexpr Field PATH = Field::text("path", "the clock's device").required();
    static constexpr Field UTC =
        Field::flag("utc", "the clock runs in UTC, and not in local time").otherwise(1);

    static constexpr Field FIELDS[] = {PATH, UTC};
    static constexpr ElementSchema DEVICE{"Device", ElementSchema::SINGLE, "exactly one", FIELDS};
    static constexpr ElementSchema DEVICES[] = {DEVICE};

    static constexpr DocumentSchema DOCUMENT{
        "clock",
        "/hd1/program/config/RTCDriverConfig.xml",
        "the clock",
        "/dev/rtc0 in UTC is taken",
        true,
        "the file cannot be used",
        {"RTCDriverConfig", ElementSchema::REQUIRED, "", {}, DEVICES},
        true,
        "../config/RTCDriverConfig.xml"};
};
