#include "print/Duration.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <cstdio>

namespace {

constexpr double SECOND = 1000.0; // milliseconds

CLI::Validator inSeconds() {
    const std::map<std::string, double> units{{"ms", 1 / SECOND}, {"s", 1}, {"m", 60}, {"min", 60}};
    return CLI::AsNumberWithUnit(units, CLI::AsNumberWithUnit::CASE_SENSITIVE).description("");
}

} // namespace

CLI::Option* Duration::addOption(CLI::App& app, const std::string& name, std::int64_t& milliseconds,
                                 std::int64_t longest, const std::string& description) {
    const auto take = [&milliseconds](double seconds) {
        milliseconds = std::llround(seconds * SECOND);
    };
    const double most = static_cast<double>(longest) / SECOND;
    return app.add_option_function<double>(name, take, description)
        ->transform(inSeconds())
        ->check(CLI::Range(1 / SECOND, most).description(""))
        ->type_name("DURATION");
}

std::int64_t Duration::parse(std::string text) {
    double seconds = -1;
    try {
        const bool isWrong =
            !inSeconds()(text).empty() || !CLI::detail::lexical_cast(text, seconds);
        return isWrong || seconds < 0 ? -1 : std::llround(seconds * SECOND);
    } catch (const CLI::ValidationError&) {
        return -1;
    }
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
