#include "lines/AlarmOutputs.h"

namespace {

struct ModeName {
    const char* name;
    AlarmOutMode::Mode mode;
};

constexpr ModeName MODE_NAMES[] = {{"steady", AlarmOutMode::Steady},
                                   {"flash", AlarmOutMode::Flash},
                                   {"pulse", AlarmOutMode::Pulse}};

} // namespace

AlarmOutputs::AlarmOutputs(const BoardLines& lines)
    : m_Manager(lines.makeManager<IOAlarmOutManager>()), m_Reader(lines.gpioOperator()) {}

std::vector<OutputState> AlarmOutputs::read(const std::vector<Line>& lines) {
    std::vector<OutputState> states;
    for (const LineState& state : m_Reader.read(lines)) {
        states.push_back({state, AlarmOutMode()});
        m_Manager->getAlarmOutMode(state.line.id, states.back().mode);
    }
    return states;
}

LineTable AlarmOutputs::table(const std::vector<OutputState>& states) {
    LineTable table({"MODE"});
    for (const OutputState& state : states) {
        table.add(state, modeName(state.mode.getMode()), state.name(), state.isActive());
    }
    return table;
}

Json AlarmOutputs::json(const std::vector<OutputState>& states) {
    Json list = Json::array();
    for (const OutputState& state : states) {
        Json object = state.json();
        object["mode"] = modeName(state.mode.getMode());
        object["state"] = state.name();
        list.push_back(object);
    }
    return list;
}

std::string AlarmOutputs::modeName(AlarmOutMode::Mode mode) {
    for (const ModeName& known : MODE_NAMES) {
        if (known.mode == mode) {
            return known.name;
        }
    }
    return std::to_string(mode);
}

AlarmOutMode::Mode AlarmOutputs::modeOf(const std::string& name) {
    for (const ModeName& known : MODE_NAMES) {
        if (known.name == name) {
            return known.mode;
        }
    }
    return AlarmOutMode::Steady;
}
