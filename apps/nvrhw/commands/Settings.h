#pragma once

#include <CLI/CLI.hpp>
#include <string>

/// What may be asked of every command.
struct Settings {
    /// The options stand before or after the name of a command.
    void addTo(CLI::App& app);

    /// Makes `board` the library's root directory, unless it was left out.
    void apply() const;

    std::string board;
    bool json = false;
};
