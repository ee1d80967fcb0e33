#pragma once

#include <cstdint>
#include <string>

namespace CLI {
class App;
class Option;
} // namespace CLI

/// Durations as people write them: "500ms", "2s", "1.5s", "1m"; a plain number is in seconds.
class Duration {
public:
    Duration() = delete;

    /// Adds an option whose value is a duration from 1 ms to `longest` ms; `milliseconds` takes it.
    static CLI::Option* addOption(CLI::App& app, const std::string& name,
                                  std::int64_t& milliseconds, std::int64_t longest,
                                  const std::string& description);

    /// The milliseconds of `text`, rounded; below 0 when it is no duration.
    static std::int64_t parse(const std::string& text);

    /// Milliseconds as text, "400 ms" or "1.5 s".
    static std::string text(std::int64_t milliseconds);
};
