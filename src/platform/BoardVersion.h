#pragma once

#include "platform/base/Export.h"

/// The version of the board layer as it runs.
class NVRHW_API BoardVersion {
public:
    BoardVersion() = delete;

    /// "major.minor.patch"; lives as long as the process.
    static const char* text();
};
