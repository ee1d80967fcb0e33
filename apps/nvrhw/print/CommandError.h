#pragma once

#include "platform/Diagnostics.h"

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
