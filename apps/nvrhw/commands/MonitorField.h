#pragma once

#include "platform/MonitorParam.h"

/// A whole number among a monitor's parameters.
struct MonitorField {
    const char* option; ///< on the command line
    const char* key;    ///< for programs
    const char* description;
    int (MonitorParam::*get)() const;
    void (MonitorParam::*set)(int);
};

constexpr MonitorField MONITOR_FIELDS[] = {
    {"--type", "type", "Input type, as in the ability document", &MonitorParam::getType,
     &MonitorParam::setType},
    {"--resolution", "resolutionId", "Resolution id of that type", &MonitorParam::getResolutionId,
     &MonitorParam::setResolutionId},
    {"--x", "x", "Left edge of the picture, pixels", &MonitorParam::getX, &MonitorParam::setX},
    {"--y", "y", "Upper edge of the picture, pixels", &MonitorParam::getY, &MonitorParam::setY},
    {"--width", "width", "Width of the picture, pixels", &MonitorParam::getWidth,
     &MonitorParam::setWidth},
    {"--height", "height", "Height of the picture, pixels", &MonitorParam::getHeight,
     &MonitorParam::setHeight},
    {"--refresh-rate", "refreshRate", "Hertz; 0 is the display's own",
     &MonitorParam::getRefreshRate, &MonitorParam::setRefreshRate},
    {"--brightness", "brightness", "0 to 100", &MonitorParam::getBrightness,
     &MonitorParam::setBrightness},
};
