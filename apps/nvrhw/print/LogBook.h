#pragma once

#include <string>
#include <vector>

/// The library's log records, kept for whoever can say what they mean. The last word of a failing
/// command is the cause that stands in them; what nobody asks for is printed at the end.
/// Thread-safe.
class LogBook {
public:
    LogBook() = delete;

    /// From now on the records come here instead of to standard error and syslog.
    static void open();

    /// The texts of the records kept so far, which are then forgotten.
    static std::vector<std::string> take();

    /// The same as one text, "; " between records; `fallback` when there are none.
    static std::string takeCause(const std::string& fallback);

    /// Keeps no records about a subject from now on, for who says the same better.
    static void leaveOut(const std::string& subject);

    /// From now on a record is printed on standard error as it comes, and those kept are printed.
    static void follow();

    /// Prints what was kept as warnings on standard error, one line each.
    static void close();
};
