#include "application/Moment.h"

#include <cstdio>
#include <ctime>

namespace nvrhw {

std::string clockText(WallTime time) {
    using namespace std::chrono;
    const auto seconds = floor<std::chrono::seconds>(time);
    const std::time_t second = seconds.time_since_epoch().count();
    std::tm local{};
    localtime_r(&second, &local);
    char text[32];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d.%03d", local.tm_hour, local.tm_min,
                  local.tm_sec,
                  static_cast<int>(duration_cast<milliseconds>(time - seconds).count()));
    return text;
}

} // namespace nvrhw
