#include "panel/PanelBoard.h"

#include "lines/AlarmInputs.h"
#include "lines/AlarmOutputs.h"
#include "platform/Diagnostics.h"
#include "print/CommandError.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace {

constexpr double MICROSECONDS_PER_SECOND = 1e6;

IOInfo request(const Line& line, std::size_t index) {
    IOInfo info;
    info.setId(static_cast<int>(index));
    info.setGroupId(line.group);
    info.setBitPosion(line.bit);
    return info;
}

std::string name(const char* what, const Line& line) {
    return std::string(what) + " " + std::to_string(line.id);
}

} // namespace

PanelBoard::PanelBoard(const BoardLines& lines, PanelMailbox& mailbox)
    : m_Operator(lines.gpioOperator()), m_Inputs(AlarmInputs(lines).manager()),
      m_Outputs(AlarmOutputs(lines).manager()), m_ListenerId(m_Inputs->addListener(&mailbox)) {
    SafePointer<MachineConfigurationDetail> detail(lines.detail());
    m_Watch.setMachineConfigurationDetail(detail);
    m_Watch.setIOAlarmInManager(m_Inputs);
    m_Watch.start(); // the library logs what it cannot watch
    m_Inputs->notifyAlarmConsumers(false);
}

PanelBoard::~PanelBoard() {
    static_cast<void>(letGo());
    m_Watch.stop();
    m_Inputs->removeListener(m_ListenerId);
}

void PanelBoard::refresh(PanelModel& model) {
    refreshLevels(model);
    for (PanelOutput& output : model.outputs) {
        m_Outputs->getAlarmOutMode(output.line.id, output.mode);
        refreshOperation(output);
    }
}

void PanelBoard::trigger(const PanelOutput& output) {
    m_Triggered.insert_or_assign(output.line.id, output.line);
    m_Outputs->triggerAlarm(output.line.id);
}

void PanelBoard::cancel(const PanelOutput& output) {
    m_Triggered.erase(output.line.id);
    m_Outputs->cancelAlarm(output.line.id);
}

void PanelBoard::setMode(const PanelOutput& output, const AlarmOutMode& mode) {
    m_Triggered.erase(output.line.id);
    m_Outputs->setAlarmOutMode(output.line.id, mode);
}

void PanelBoard::flip(const PanelInput& input) {
    const Line& line = input.line;
    const std::string bank =
        GlobalEnv::getInstance()->resolve(BoardLines::DEVICE) + "/" + std::to_string(line.group);
    if (std::filesystem::is_character_file(bank)) {
        throw CommandError(name("input", line) + " is a line of a real GPIO chip: close or open "
                                                 "its contact; only simulated ones can be flipped");
    }
    int level = 0;
    if (m_Operator->get(line.group, line.bit, level) == 0) {
        throw CommandError(name("input", line) +
                           " cannot be flipped while it is unreadable; the messages say why");
    }
    const std::string path = bank + "/" + std::to_string(line.bit);
    std::fstream file(path, std::ios::in | std::ios::out); // never empty in between
    if (!(file << 1 - level << std::flush)) {
        throw CommandError(path + " cannot be written: " + std::strerror(errno));
    }
}

std::vector<std::string> PanelBoard::letGo() {
    std::vector<std::string> texts;
    for (const auto& [id, line] : m_Triggered) {
        AlarmOutMode mode;
        m_Outputs->getAlarmOutMode(id, mode);
        int level = 0;
        if (!m_Operator->findRecord(line.group, line.bit).isNull()) {
            m_Outputs->cancelAlarm(id);
            texts.push_back(name("output", line) + " was switched off with the panel");
        } else if (m_Operator->get(line.group, line.bit, level) != 0 &&
                   level == (line.validLevel ^ mode.getValidSignal())) {
            texts.push_back(name("output", line) + " stays on");
        }
    }
    m_Triggered.clear();
    return texts;
}

void PanelBoard::refreshLevels(PanelModel& model) {
    std::vector<IOInfo> infos;
    std::vector<int*> levels;
    const auto add = [&](const Line& line, int& level) {
        infos.push_back(request(line, levels.size()));
        levels.push_back(&level);
        level = -1;
    };
    for (PanelInput& input : model.inputs) {
        add(input.line, input.level);
    }
    for (PanelOutput& output : model.outputs) {
        add(output.line, output.level);
    }
    std::vector<IOState> states;
    m_Operator->get(infos, states);
    for (const IOState& state : states) {
        *levels[static_cast<std::size_t>(state.getId())] = state.getLevel();
    }
}

// The worker changes neither of the values read here, and whoever replaces them is this thread.
void PanelBoard::refreshOperation(PanelOutput& output) {
    const auto record = m_Operator->findRecord(output.line.group, output.line.bit);
    output.operation = PanelOutput::NONE;
    output.remaining = 0.0;
    if (record.isNull()) {
        return;
    }
    output.operation = record->getOperateMode() == GPIOOperateRecord::TOGGLE ? PanelOutput::FLASHING
                                                                             : PanelOutput::HELD;
    if (record->getTimeOut() != 0) {
        const double past = GPIOOperateRecord::now() - record->getStartOperateTime();
        output.remaining = std::max(0.0, (record->getTimeOut() - past) / MICROSECONDS_PER_SECOND);
    }
}
