#include "print/Duration.h"

#include <CLI/CLI.hpp>
#include <cctype>
#include <cmath>
#include <cstdio>

namespace {

constexpr double SECOND = 1000.0; // milliseconds

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

std::int64_t Duration::parse(std::string text) {
    const std::map<std::string, double> units{{"ms", 1}, {"s", SECOND}, {"m", 60e3}, {"min", 60e3}};
    const bool isSeconds = !text.empty() && std::isdigit(static_cast<unsigned char>(text.back()));
    double value = -1;
    try {
        if (text.empty() || std::isalpha(static_cast<unsigned char>(text.front())) ||
            !CLI::AsNumberWithUnit(units, CLI::AsNumberWithUnit::CASE_SENSITIVE)(text).empty() ||
            !CLI::detail::lexical_cast(text, value)) {
            return -1;
        }
        return std::llround(std::min(isSeconds ? value * SECOND : value, 1e15));
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
