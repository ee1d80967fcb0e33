#pragma once

#include "board/documents/schema/Schema.h"

/// The file systems that the recorder supports.
struct FileSystemSchema {
    using Field = FieldSchema;

    static constexpr Field ID =
        Field::number("id", "the number the application uses").required().key();
    static constexpr Field NAME = Field::text("name", "such as `ext4`").required();
    static constexpr Field MAX_PARTITION_SIZE =
        Field::number("maxPartitionSize", "largest partition, GiB; 0: no limit").from(NOT_NEGATIVE);
    static constexpr Field SUPPORT_FORMAT_FLAG =
        Field::flag("supportFormatFlag", "the recorder can format a disk with it");
    static constexpr Field SUPPORT_RECORD_FLAG =
        Field::flag("supportRecordFlag", "it can record to it, and not only export");

    static constexpr Field FIELDS[] = {ID, NAME, MAX_PARTITION_SIZE, SUPPORT_FORMAT_FLAG,
                                       SUPPORT_RECORD_FLAG};
    static constexpr ElementSchema ITEMS[] = {{"item", ElementSchema::ANY_NUMBER, "", FIELDS}};
    static constexpr ElementSchema SECTION{
        "FileSystemAbility", ElementSchema::REQUIRED, "one item for each", {}, ITEMS};
    static constexpr ElementSchema SECTIONS[] = {SECTION};

    static constexpr DocumentSchema DOCUMENT{
        "file systems",
        "/hd1/program/config/fileSystemAbility.xml",
        "file systems",
        "the process ends with status 0",
        false,
        "the process ends",
        {"FileSystemAbilityConfig", ElementSchema::REQUIRED, "", {}, SECTIONS}};
};
