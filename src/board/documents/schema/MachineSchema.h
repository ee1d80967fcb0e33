#pragma once

#include "board/documents/schema/Schema.h"

/// What the factory wrote about the machine.
struct MachineSchema {
    using Field = FieldSchema;

    static constexpr Field MANUFACTURER = Field::text("manufacturer", "who made it");
    static constexpr Field MODEL = Field::text("model", "what it is sold as").expected();
    static constexpr Field SERIAL_NUMBER =
        Field::text("serialNumber", "letters and leading zeros stay").expected();
    static constexpr Field HARDWARE_VERSION =
        Field::text("hardwareVersion", "the board's revision");
    static constexpr Field PRODUCTION_DATE =
        Field::text("productionDate", "such as 2026-03-18; not checked to be a date");

    static constexpr Field FIELDS[] = {MANUFACTURER, MODEL, SERIAL_NUMBER, HARDWARE_VERSION,
                                       PRODUCTION_DATE};
    static constexpr ElementSchema MACHINE{"machine", ElementSchema::OPTIONAL, "", FIELDS};
    static constexpr ElementSchema SECTIONS[] = {MACHINE};

    static constexpr DocumentSchema DOCUMENT{
        "machine information",
        "/mnt/mtd/code/factory_setting/machineinfo.ini",
        "the machine",
        "a log line; the machine's and the software's texts are empty",
        false,
        "",
        {"", ElementSchema::REQUIRED, "", {}, SECTIONS}};
};
