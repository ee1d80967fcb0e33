#pragma once

#include "platform/base/Export.h"

/// The version of this library as it runs, which may be newer than the headers an application was
/// compiled with.
class NVRHW_API Version {
public:
    Version() = delete;

    /// "major.minor.patch"; lives as long as the process.
    static const char* text();
};
