#pragma once

#include "platform/base/Export.h"

/// The common root of all SafePointer<T>, so that one container can hold pointers to anything.
class NVRHW_API BaseSafePointer {
public:
    // A release that finds its record counting another object raises XQRuntimeError.
    virtual ~BaseSafePointer() noexcept(false) {}
};
