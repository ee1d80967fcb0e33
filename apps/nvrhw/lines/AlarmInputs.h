#pragma once

#include "alarm/IOAlarmInManager.h"
#include "lines/LineReader.h"
#include "lines/LineTable.h"
#include "print/Console.h"

#include <vector>

/// An alarm input and its state by the library's rule: in alarm while its line is at the valid
/// level, or, when the user valid level is 1, while it is not.
struct InputState : LineState {
    int userLevel = 0;

    bool isAlarm() const { return isReadable() && (line.validLevel ^ level) == userLevel; }
    const char* name() const {
        return !isReadable() ? "unreadable" : isAlarm() ? "alarm" : "normal";
    }
};

/// The alarm inputs of the board.
class AlarmInputs {
public:
    /// Keeps a reference to `lines`.
    explicit AlarmInputs(const BoardLines& lines);

    /// The states of the inputs at `lines`, in their order.
    std::vector<InputState> read(const std::vector<Line>& lines);

    static LineTable table(const std::vector<InputState>& states);
    static Json json(const std::vector<InputState>& states);

    const SafePointer<IOAlarmInManager>& manager() const { return m_Manager; }

private:
    SafePointer<IOAlarmInManager> m_Manager;
    LineReader m_Reader;
};
