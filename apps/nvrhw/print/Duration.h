#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>

/// Durations as people write them: "500ms", "2s", "1.5s", "1m"; a plain number is in seconds.
class Duration {
public:
    Duration() = delete;

    /// A check that an option's text is a duration from `shortest` to `longest` milliseconds.
    static CLI::Validator between(std::int64_t shortest, std::int64_t longest);

    /// The milliseconds of `text`, rounded; -1 when it is no duration.
    static std::int64_t parse(const std::string& text);

    /// Milliseconds as text, "400 ms" or "1.5 s".
    static std::string text(std::int64_t milliseconds);
};
