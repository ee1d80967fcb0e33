#pragma once

#include <exception>
#include <string>

/// Runs code that is not ours: the text of the exception it ended by, or an empty text.
template <typename Action> std::string exceptionText(const Action& action) {
    try {
        action();
    } catch (const std::exception& error) {
        const std::string text = error.what();
        return text.empty() ? "an exception without a text" : text;
    } catch (...) {
        return "an exception that is no std::exception";
    }
    return {};
}
