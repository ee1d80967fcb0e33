#pragma once

#include "platform/base/Export.h"

#include <string>

/// What the library asks the operating system.
class NVRHW_API SystemHelper {
public:
    /// This process's id.
    static int getPid();
};

/// Numbers as texts.
class NVRHW_API DataConverter {
public:
    /// Replaces `text` by the decimal text of `value`, without blanks or leading zeros.
    static void convert(const int& value, std::string& text);
};
