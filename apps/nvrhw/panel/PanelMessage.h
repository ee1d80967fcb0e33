#pragma once

#include <ctime>
#include <string>

/// Something that happened: an alarm message or a log record of the library.
struct PanelMessage {
    enum Kind { ALARM, NORMAL, LOG };

    Kind kind;
    std::time_t time;
    int inputId;      ///< of an alarm message
    std::string text; ///< of a log record
};
