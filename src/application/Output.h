#pragma once

#include "application/Error.h"
#include "application/Line.h"
#include "application/Moment.h"
#include "platform/Cause.h"
#include "platform/base/Export.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string_view>

namespace nvrhw {

class OutputModel;
struct NVRHW_API OutputState;

/// An alarm output of a Board. A small handle to be copied freely; thread-safe, also from inside
/// callbacks. Once the board has gone every operation answers Error::Closed.
///
/// An operation takes the place of the one that runs on the output; only a pulse leaves a timed or
/// flashing one running. Changes over time fall on a grid of 50 ms. An operation whose first drive
/// fails answers Error::NotDriven and goes on nevertheless: a line that comes back gets the level
/// of the next drive.
class NVRHW_API Output {
public:
    /// What goes on at an output.
    enum Operation { None, Hold, Flash, Pulse };

    /// Of periods and times; anything that converts without loss, such as `5s`.
    using Time = std::chrono::milliseconds;

    static constexpr Time SHORTEST_PERIOD{100};  ///< of a flash: two steps of the grid
    static constexpr Time LONGEST_TIME{2147483}; ///< of anything

    int id;                ///< of the hardware configuration
    std::string_view name; ///< empty when it has none; lives as long as any handle of the output
    Line line;             ///< where it is wired

    /// Active until something else is asked for, or for a time.
    Result hold() const;
    Result hold(Time time) const;

    /// Active and at rest in turn, each for half a period, until something else is asked for, or
    /// for a time, after which it is at rest.
    Result flash(Time period) const;
    Result flash(Time period, Time time) const;

    /// Active for 10 ms, which the caller waits for.
    Result pulse() const;

    /// At rest, whatever ran.
    Result rest() const;

    // A time of nothing or less or of more than LONGEST_TIME, or a period below SHORTEST_PERIOD or
    // above LONGEST_TIME raises Error::BadArgument.

    /// Reads the line.
    OutputState state() const;

    /// Inverted, the output is active while its line is not at the valid level, for every handle of
    /// this output: state() judges by it at once, the line follows with the next operation.
    void setInverted(bool isInverted) const;
    bool isInverted() const;

private:
    friend class OutputModel;
    Output(std::shared_ptr<OutputModel> model, std::size_t index);

    std::shared_ptr<OutputModel> m_Model;
    std::size_t m_Index;
};

/// What an output does and how its line is.
struct NVRHW_API OutputState {
    bool isActive = false; ///< by the line, or by the last drive while the line cannot be read
    int level = -1;        ///< of the line: 0 or 1; -1 when it cannot be read
    bool agrees = true;    ///< the line has the level that was last driven, if there was a drive

    Output::Operation operation = Output::None; ///< what goes on
    std::optional<Output::Time> remaining{};    ///< of it; none when it has no end

    /// Of the last drive of the line or of the worker; gone with the next success.
    std::optional<Error> failure{};

    /// Why the line cannot be read.
    Cause cause{};
};

/// Something that happened to an output.
struct NVRHW_API OutputChange {
    /// What happened.
    enum Kind {
        Began,
        Ended,    ///< in its time, or by rest()
        Replaced, ///< another operation has begun in its place
        Failed,   ///< the line cannot be driven; told once until it can be driven again
        Driven    ///< the line was driven; for Board::onDrive() alone
    };

    Output output;               ///< whose it is
    Kind kind;                   ///< what happened
    Output::Operation operation; ///< which began or ended; for the others the one that goes on
    int level;                   ///< of the drive, for Driven and Failed; else -1
    Cause cause;                 ///< of Failed
    Moment time;                 ///< when it happened
    unsigned leftOut;            ///< of this output, not told before this one, for want of room
};

/// "none", "hold", "flash" or "pulse".
NVRHW_API const char* toText(Output::Operation operation);

/// "began", "ended", "replaced", "failed" or "driven".
NVRHW_API const char* toText(OutputChange::Kind kind);

/// "14:03:07.412 output 2 (siren) flash began", in the local time of the process.
NVRHW_API std::ostream& operator<<(std::ostream& stream, const OutputChange& change);

/// What Board::onOutput() and Board::onDrive() call.
using OutputCallback = std::function<void(const OutputChange&)>;

} // namespace nvrhw
