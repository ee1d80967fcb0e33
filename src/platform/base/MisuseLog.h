#pragma once

#include "platform/base/Export.h"

/// Takes the reports of misused pointers to where the log goes.
class NVRHW_API MisuseLog {
public:
    /// `report` is the type and what was done to it: "12GPIOOperator Use NULL pointer ->"; `file`
    /// and `line` are the place that noticed. Called by the thread that is at fault, at any time
    /// and with any locks held, just before the misuse is raised.
    static void write(const char* report, const char* file, int line);
};
