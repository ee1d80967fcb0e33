#pragma once

#include "platform/Diagnostics.h"

/// Does the work of an operation of the seam: 1, or 0 with the text of the Error it ended by in the
/// log.
template <typename Error, typename Action>
int guarded(const char* subject, const char* file, int line, const Action& action) {
    try {
        action();
        return 1;
    } catch (const Error& error) {
        Logger::writeLog(subject, error.what(), file, line);
        return 0;
    }
}
