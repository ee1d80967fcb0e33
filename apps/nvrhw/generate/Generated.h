#pragma once

// This room: what is made of what the program knows, so that the two cannot differ.

#include <string>

namespace CLI {
class App;
} // namespace CLI

/// The completion for bash, from what the parser of the command line knows.
std::string bashCompletion(const CLI::App& program);

/// The help of the program and of all its commands, as help2man wants it for the manual page.
std::string manualText(const CLI::App& program);
