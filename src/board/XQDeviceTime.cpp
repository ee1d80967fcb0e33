#include "platform/Time.h"

#include <chrono>

double XQDeviceTime::getSeconds() {
    using Seconds = std::chrono::duration<double>;
    return Seconds(std::chrono::system_clock::now().time_since_epoch()).count();
}
