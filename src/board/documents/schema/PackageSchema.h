#pragma once

#include "board/documents/schema/Schema.h"

/// The software that is installed.
struct PackageSchema {
    using Field = FieldSchema;

    static constexpr Field NAME = Field::text("name", "the software as a whole").expected();
    static constexpr Field VERSION =
        Field::text("version", "a text: nothing compares it").expected();
    static constexpr Field BUILD_DATE =
        Field::text("buildDate", "such as 2026-03-18; not checked to be a date");

    static constexpr Field FIELDS[] = {NAME, VERSION, BUILD_DATE};
    static constexpr ElementSchema PACKAGE{"package", ElementSchema::OPTIONAL, "", FIELDS};
    static constexpr ElementSchema COMPONENTS{"components",
                                              ElementSchema::OPTIONAL,
                                              "a component's name, and its version as the value",
                                              {},
                                              {},
                                              "none",
                                              false,
                                              true};
    static constexpr ElementSchema SECTIONS[] = {PACKAGE, COMPONENTS};

    static constexpr DocumentSchema DOCUMENT{"software package",
                                             "/mnt/mtd/code/program/packageversion.ini",
                                             "the software",
                                             "a log line; the software's texts are empty",
                                             false,
                                             "",
                                             {"", ElementSchema::REQUIRED, "", {}, SECTIONS}};
};
