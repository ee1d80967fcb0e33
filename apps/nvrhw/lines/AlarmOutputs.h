#pragma once

#include "alarm/AlarmOutMode.h"
#include "alarm/IOAlarmOutManager.h"
#include "lines/LineReader.h"
#include "lines/LineTable.h"
#include "print/Console.h"

#include <string>
#include <vector>

/// An alarm output and its state as its mode has it.
struct OutputState : LineState {
    AlarmOutMode mode;

    bool isActive() const {
        return isReadable() && (line.validLevel ^ mode.getValidSignal()) == level;
    }
    const char* name() const {
        return !isReadable() ? "unreadable" : isActive() ? "active" : "normal";
    }
};

/// The alarm outputs of the board.
class AlarmOutputs {
public:
    static constexpr float DEFAULT_FREQUENCY = 2.0F; // level changes per second while flashing
    static constexpr double LOWEST_FREQUENCY = 0.01;
    static constexpr double HIGHEST_FREQUENCY = 20.0; // the library looks every 50 ms
    static constexpr int LONGEST_TIMEOUT = 2147483;   // milliseconds, the library's limit

    explicit AlarmOutputs(const BoardLines& lines);

    /// The states of the outputs at `lines`, in their order.
    std::vector<OutputState> read(const std::vector<Line>& lines);

    static LineTable table(const std::vector<OutputState>& states);
    static Json json(const std::vector<OutputState>& states);

    /// A mode's name, and back; a name that is none is "steady".
    static std::string modeName(AlarmOutMode::Mode mode);
    static AlarmOutMode::Mode modeOf(const std::string& name);

    const SafePointer<IOAlarmOutManager>& manager() const { return m_Manager; }

private:
    SafePointer<IOAlarmOutManager> m_Manager;
    LineReader m_Reader;
};
