#pragma once

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

/// Keys stay in the order in which they are set.
using Json = nlohmann::ordered_json;

/// The reader of standard output has gone: there is nobody to go on for.
class ReaderGone : public std::runtime_error {
public:
    ReaderGone() : std::runtime_error("nobody reads standard output") {}
};

/// What the program prints. Thread-safe; a line is printed whole.
class Console {
public:
    Console() = delete;

    /// Writes to standard output, at once. Raises ReaderGone when its reader has gone, and
    /// CommandError for any other failure.
    static void print(const std::string& text);

    /// A document, indented.
    static void printDocument(const Json& document);

    /// An object on a line of its own.
    static void printLine(const Json& object);

    /// Writes "nvrhw: TEXT" as one line to standard error.
    static void complain(const std::string& text);

    /// `text` with '?' in place of control characters, which a terminal would obey.
    static std::string harmless(std::string text);

    /// Whether standard output is a terminal that shows colours and the user wants them.
    static bool hasColours();
};
