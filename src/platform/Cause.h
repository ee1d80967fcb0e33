#pragma once

#include "platform/base/Export.h"

#include <cerrno>
#include <string>
#include <system_error>
#include <tuple>

/// Why something failed, as a value: it is made where the failure is known and travels to whoever
/// shows it. What is not known is left as it is here; an empty Cause says that nothing failed.
struct NVRHW_API Cause {
    std::string what{};  ///< a sentence without the place; may be empty when `error` says all
    std::string where{}; ///< the file or device, as it was opened
    int line = 0;        ///< of the file `where`, counted from 1; 0 for the file as a whole
    int error = 0;       ///< the errno; 0 when the system has not refused anything
    int bit = -1;        ///< of the line of the board; -1 when it is no line, or the whole bank

    /// With the present errno.
    static Cause fromErrno(const std::string& where, const std::string& what = "") {
        const int error = errno; // before anything else
        return {what, where, 0, error};
    }

    /// True when there is a cause, that is, when something failed.
    explicit operator bool() const { return error != 0 || !what.empty(); }

    /// For people, as logs tell it: "<where>:<line>: <what>: <the system's text for error>",
    /// without what is not known. A bit is told by the sentence.
    std::string text() const {
        std::string told = where;
        if (!where.empty() && line > 0) {
            told += ':' + std::to_string(line);
        }
        append(told, what);
        append(told, error != 0 ? std::generic_category().message(error) : "");
        return told;
    }

    /// Equal in all that is known.
    friend bool operator==(const Cause& one, const Cause& other) {
        return one.tied() == other.tied();
    }
    /// Different in something that is known.
    friend bool operator!=(const Cause& one, const Cause& other) { return !(one == other); }

private:
    static void append(std::string& text, const std::string& part) {
        text += (text.empty() || part.empty() ? "" : ": ") + part;
    }
    std::tuple<const std::string&, const std::string&, int, int, int> tied() const {
        return {what, where, line, error, bit};
    }
};
