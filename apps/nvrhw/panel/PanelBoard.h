#pragma once

#include "alarm/IOAlarmOutManager.h"
#include "lines/AlarmMailbox.h"
#include "panel/PanelModel.h"

#include <map>
#include <string>
#include <vector>

/// The alarm lines behind the panel, run by the library as a recorder has them. Like BoardLines it
/// needs nothing else of the board.
class PanelBoard {
public:
    /// Begins to watch the inputs, whose messages go to `mailbox`. Both are kept.
    PanelBoard(const BoardLines& lines, AlarmMailbox& mailbox);

    /// As letGo(), and ends watching.
    ~PanelBoard();
    PanelBoard(const PanelBoard&) = delete;
    PanelBoard& operator=(const PanelBoard&) = delete;

    /// Brings the model up to date: levels, modes and operations.
    void refresh(PanelModel& model);

    /// Switches an output on, or off.
    void trigger(const OutputState& output);
    void cancel(const OutputState& output);

    /// Changes the output's mode, which switches it off.
    void setMode(const OutputState& output, const AlarmOutMode& mode);

    /// As BoardLines::flip().
    void flip(const InputState& input) { m_Lines.flip(input.line); }

    /// Switches off what would not end by itself without this process, and returns a line on each
    /// output that was triggered here: what was ended, and what stays on.
    std::vector<std::string> letGo();

private:
    void refreshOperation(OutputState& output);

    const BoardLines& m_Lines;
    SafePointer<GPIOOperator> m_Operator;
    SafePointer<IOAlarmOutManager> m_Outputs;
    AlarmWatch m_Watch;
    std::map<int, Line> m_Triggered; // outputs by id
};
