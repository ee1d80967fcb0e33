#pragma once

#include "application/Error.h"
#include "application/Line.h"
#include "application/Moment.h"
#include "platform/Cause.h"
#include "platform/base/Export.h"

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string_view>

namespace nvrhw {

class InputModel;

/// An alarm input of a Board. A small handle to be copied freely; thread-safe. Once the board has
/// gone, what was last known stays.
class NVRHW_API Input {
public:
    /// What the line says, by its valid level and setInverted().
    enum State {
        Normal,    ///< no alarm
        Alarm,     ///< the line is at the level that tells it
        Unreadable ///< the line cannot be read: cause() says why
    };

    /// What is known of an input at one moment.
    struct Status {
        State state;  ///< by the level and the inversion
        int level;    ///< 0 or 1; -1 while the line cannot be read
        Moment since; ///< the state is what it is
        Cause cause;  ///< why the line cannot be read; empty while it can
    };

    int id;                ///< of the hardware configuration
    std::string_view name; ///< empty when it has none; lives as long as any handle of the input
    Line line;             ///< where it is wired

    /// As of the last look at the lines, which follows each of their changes at once.
    Status status() const;

    /// One of these.
    State state() const;
    int level() const;
    Moment since() const;
    Cause cause() const;

    /// Inverted, the input is in alarm while its line is not at the valid level. It holds for this
    /// process and until it is changed. A change of state that comes of it is told like any other.
    Result setInverted(bool isInverted) const;
    bool isInverted() const;

private:
    friend class InputModel;
    Input(std::shared_ptr<InputModel> model, std::size_t index);

    std::shared_ptr<InputModel> m_Model;
    std::size_t m_Index;
};

/// A change of an input's state, or the state a registration begins with.
struct NVRHW_API InputChange {
    Input input;        ///< whose it is
    Input::State state; ///< from now on
    int level;          ///< 0 or 1; -1 when the line cannot be read
    Cause cause;        ///< why it cannot
    Moment time;        ///< of the edge, where the kernel tells; else when the change was seen
    bool isPresent;     ///< the state found when the registration began
    unsigned
        leftOut; ///< changes of this input that were not told before this one, for want of room
};

/// "normal", "alarm" or "unreadable".
NVRHW_API const char* toText(Input::State state);

/// "14:03:07.412 input 3 (door) alarm", in the local time of the process; an unreadable input is
/// followed by the cause.
NVRHW_API std::ostream& operator<<(std::ostream& stream, const InputChange& change);

/// What Board::onInput() calls.
using InputCallback = std::function<void(const InputChange&)>;

} // namespace nvrhw
