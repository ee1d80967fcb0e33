#pragma once

#include <string>

namespace CLI {
class App;
} // namespace CLI

/// Writes the manual page's section about the subcommands, for help2man to include, from what the
/// command line's parser knows.
class Manual {
public:
    Manual() = delete;

    static std::string text(const CLI::App& program);
};
