#pragma once

#include "platform/Cause.h"
#include "platform/base/Export.h"

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace nvrhw {

/// The one error of this interface. It is raised where what was asked for makes no sense or where
/// nothing can go on without it (a board that cannot be opened, an output that does not exist, a
/// period that cannot be had); what the world may refuse at any time, such as driving a line,
/// answers a Result that holds it.
class NVRHW_API Error : public std::runtime_error {
public:
    /// What kind of error it is.
    enum Code {
        BadBoard,    ///< the board's documents or its GPIO device: causes() lists all that is wrong
        Busy,        ///< another board is open in this process, or the factory runs
        NoSuchLine,  ///< there is no input or output of this id or name
        BadArgument, ///< a value that cannot be meant
        NoService,   ///< no service of this type is registered, or the factory has not been started
        NotDriven,   ///< the line cannot be driven
        NoWorker,    ///< the thread that carries on timed operations cannot be started
        NotStored,   ///< a document cannot be read or written
        Closed       ///< the board has been destroyed
    };

    /// `what` is the whole text.
    Error(Code code, const std::string& what);

    /// The text is "what: cause", or `what` and a line for each of several causes.
    Error(Code code, const std::string& what, std::vector<Cause> causes);

    /// What kind of error it is.
    Code code() const noexcept { return m_Code; }

    /// The causes as data: file or device, line, the system's error number; may be empty.
    const std::vector<Cause>& causes() const noexcept;

private:
    Code m_Code;
    std::shared_ptr<const std::vector<Cause>> m_Causes; // an exception is copied without raising
};

/// Success, or the Error that stood in the way. It may be ignored: a line that
/// cannot be driven is told to the board's registrations and in the log, too.
class NVRHW_API Result {
public:
    /// Success.
    Result() = default;

    /// The error that stood in the way.
    Result(Error error) : m_Error(std::move(error)) {} // NOLINT(google-explicit-constructor)

    /// True on success.
    explicit operator bool() const { return !m_Error.has_value(); }

    /// What stood in the way; not to be asked of a success (std::bad_optional_access).
    const Error& error() const { return m_Error.value(); }

private:
    std::optional<Error> m_Error;
};

} // namespace nvrhw
