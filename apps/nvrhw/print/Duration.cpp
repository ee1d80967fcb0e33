#include "print/Duration.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr double SECOND = 1000.0; // milliseconds
constexpr double MINUTE = 60 * SECOND;
constexpr double LONGEST = 1e15;

} // namespace

CLI::Option* Duration::addOption(CLI::App& app, const std::string& name, std::int64_t& milliseconds,
                                 std::int64_t longest, const std::string& description) {
    const auto check = [longest](const std::string& written) {
        const std::int64_t value = parse(written);
        return value >= 1 && value <= longest
                   ? ""
                   : "\"" + written + "\" is no duration such as 500ms, 2s or 1m, up to " +
                         text(longest);
    };
    const auto take = [&milliseconds](const std::string& written) {
        milliseconds = parse(written);
    };
    return app.add_option_function<std::string>(name, take, description)
        ->check(CLI::Validator(check, ""))
        ->type_name("DURATION");
}

// The parser's own numbers with units keep six digits, too few for milliseconds.
std::int64_t Duration::parse(const std::string& text) {
    const std::map<std::string, double> units{
        {"", SECOND}, {"s", SECOND}, {"ms", 1}, {"m", MINUTE}, {"min", MINUTE}};
    char* rest = nullptr;
    const double number = std::strtod(text.c_str(), &rest);
    const auto unit = units.find(rest + std::strspn(rest, " "));
    if (rest == text.c_str() || unit == units.end() || !(number >= 0)) {
        return -1;
    }
    return std::llround(std::min(number * unit->second, LONGEST));
}

std::string Duration::text(std::int64_t milliseconds) {
    const auto number = static_cast<double>(milliseconds);
    char text[32];
    if (number < SECOND) {
        std::snprintf(text, sizeof text, "%g ms", number);
    } else {
        std::snprintf(text, sizeof text, "%.15g s", number / SECOND);
    }
    return text;
}
