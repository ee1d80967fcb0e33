#pragma once

// This room: the program's ways to the outside, whatever is told. Facts and their tables, JSON,
// texts, standard output, the library's log, signals. It knows nothing of lines and boards.

#include "platform/Diagnostics.h"
#include "print/Fact.h"

#include <stdexcept>
#include <string>

/// What was asked for cannot be done: one line that says what failed, why and what to do.
class CommandError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;

    /// What is wrong with the files of the board, whose check tells the rest.
    static CommandError ofBoard(const std::string& cause) {
        return CommandError(cause + "; `nvrhw check --board " +
                            GlobalEnv::getInstance()->getRootDirectory() + "` says more");
    }
};

/// The reader of standard output has gone: there is nobody to go on for.
class ReaderGone : public std::runtime_error {
public:
    ReaderGone() : std::runtime_error("nobody reads standard output") {}
};

/// What the program prints. Thread-safe; a line is printed whole.
class Console {
public:
    Console() = delete;

    /// From now on standard output is the program's alone: what the library prints there goes to
    /// standard error. To be called once, before anything else; sets the language of texts, too.
    static void open();

    /// Where the program's standard output goes.
    static int file();

    /// Writes to standard output, at once. Raises ReaderGone when its reader has gone, and
    /// CommandError for any other failure.
    static void print(const std::string& text);

    /// A document of JSON, indented; and an object on a line of its own.
    static void printDocument(const Value& document);
    static void printLine(const Record& object);

    /// Writes "nvrhw: TEXT" as one line to standard error.
    static void complain(const std::string& text);

    static bool isTerminal();

    /// The width of the terminal; 0 when standard output is none.
    static int columns();

    /// Whether standard output is a terminal that shows colours and the user wants them.
    static bool hasColours();
};
