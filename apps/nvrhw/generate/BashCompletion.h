#pragma once

#include <string>

namespace CLI {
class App;
class Option;
} // namespace CLI

/// Writes the completion for bash from what the command line's parser knows, so that the two
/// cannot differ.
class BashCompletion {
public:
    explicit BashCompletion(const CLI::App& program);

    /// The script.
    std::string text() const;

private:
    void visit(const CLI::App& app, const std::string& path);
    void addOption(const CLI::Option& option, const std::string& path, std::string& words);

    std::string m_Words;  // entries of the array: a command's options and subcommands
    std::string m_Values; // the same: what the value of an option or a positional may be
};
