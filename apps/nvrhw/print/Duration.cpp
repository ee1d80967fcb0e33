#include "print/Duration.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace {

struct Unit {
    const char* name;
    double milliseconds;
};

constexpr Unit UNITS[] = {{"", 1000}, {"ms", 1}, {"s", 1000}, {"m", 60000}, {"min", 60000}};
constexpr double LONGEST = 1e12;
constexpr std::int64_t SECOND = 1000;

} // namespace

CLI::Validator Duration::between(std::int64_t shortest, std::int64_t longest) {
    const auto check = [shortest, longest](const std::string& text) {
        const std::int64_t milliseconds = parse(text);
        if (milliseconds < 0) {
            return "\"" + text + "\" is no duration such as 500ms, 2s or 1m";
        }
        if (milliseconds < shortest || milliseconds > longest) {
            return text + " is not from " + Duration::text(shortest) + " to " +
                   Duration::text(longest);
        }
        return std::string();
    };
    return CLI::Validator(check, "");
}

std::int64_t Duration::parse(const std::string& text) {
    const std::size_t end = text.find_first_not_of("0123456789.");
    const std::string number = text.substr(0, end);
    const std::string unit = end == std::string::npos ? "" : text.substr(end);
    char* rest = nullptr;
    const double value = std::strtod(number.c_str(), &rest);
    if (number.empty() || *rest != '\0') {
        return -1;
    }
    for (const Unit& known : UNITS) {
        if (unit == known.name) {
            const double milliseconds = value * known.milliseconds;
            return milliseconds > LONGEST ? -1 : std::llround(milliseconds);
        }
    }
    return -1;
}

std::string Duration::text(std::int64_t milliseconds) {
    if (milliseconds < SECOND) {
        return std::to_string(milliseconds) + " ms";
    }
    char text[32];
    std::snprintf(text, sizeof text, "%.15g s", static_cast<double>(milliseconds) / SECOND);
    return text;
}
