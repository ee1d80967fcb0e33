#include "panel/PanelBoard.h"

#include <algorithm>

namespace {

constexpr double MICROSECONDS_PER_SECOND = 1e6;

std::string name(const Line& line) { return "output " + std::to_string(line.id); }

} // namespace

PanelBoard::PanelBoard(const BoardLines& lines, AlarmMailbox& mailbox)
    : m_Lines(lines), m_Operator(lines.gpioOperator()),
      m_Outputs(lines.makeManager<IOAlarmOutManager>()), m_Watch(lines, mailbox, true) {}

PanelBoard::~PanelBoard() { static_cast<void>(letGo()); }

void PanelBoard::refresh(PanelModel& model) {
    std::vector<LineState*> states;
    for (InputState& input : model.inputs) {
        states.push_back(&input);
    }
    for (OutputState& output : model.outputs) {
        states.push_back(&output);
        m_Outputs->getAlarmOutMode(output.line.id, output.mode);
        refreshOperation(output);
    }
    m_Lines.read(states);
    model.judge();
}

void PanelBoard::trigger(const OutputState& output) {
    m_Triggered.insert_or_assign(output.line.id, output.line);
    m_Outputs->triggerAlarm(output.line.id);
}

void PanelBoard::cancel(const OutputState& output) {
    m_Triggered.erase(output.line.id);
    m_Outputs->cancelAlarm(output.line.id);
}

void PanelBoard::setMode(const OutputState& output, const AlarmOutMode& mode) {
    m_Triggered.erase(output.line.id);
    m_Outputs->setAlarmOutMode(output.line.id, mode);
}

std::vector<std::string> PanelBoard::letGo() {
    std::vector<std::string> texts;
    for (const auto& [id, line] : m_Triggered) {
        OutputState output;
        output.line = line;
        m_Outputs->getAlarmOutMode(id, output.mode);
        m_Lines.read({&output});
        if (!m_Operator->findRecord(line.group, line.bit).isNull()) {
            m_Outputs->cancelAlarm(id);
            texts.push_back(name(line) + " was switched off with the panel");
        } else if (output.isActive()) {
            texts.push_back(name(line) + " stays on");
        }
    }
    m_Triggered.clear();
    return texts;
}

// The worker changes neither of the values read here, and whoever replaces them is this thread.
void PanelBoard::refreshOperation(OutputState& output) {
    const auto record = m_Operator->findRecord(output.line.group, output.line.bit);
    output.operation = OutputState::NONE;
    output.remaining = 0.0;
    if (record.isNull()) {
        return;
    }
    output.operation = record->getOperateMode() == GPIOOperateRecord::TOGGLE ? OutputState::FLASHING
                                                                             : OutputState::HELD;
    if (record->getTimeOut() != 0) {
        const double past = GPIOOperateRecord::now() - record->getStartOperateTime();
        output.remaining = std::max(0.0, (record->getTimeOut() - past) / MICROSECONDS_PER_SECOND);
    }
}
