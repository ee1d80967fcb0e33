#include "lines/AlarmInputs.h"

AlarmInputs::AlarmInputs(const BoardLines& lines)
    : m_Manager(lines.makeManager<IOAlarmInManager>()), m_Reader(lines.gpioOperator()) {}

std::vector<InputState> AlarmInputs::read(const std::vector<Line>& lines) {
    std::vector<InputState> states;
    for (const LineState& state : m_Reader.read(lines)) {
        states.push_back({state});
        m_Manager->getValidLevel(state.line.id, states.back().userLevel);
    }
    return states;
}

LineTable AlarmInputs::table(const std::vector<InputState>& states) {
    LineTable table({"USER", Table::RIGHT});
    for (const InputState& state : states) {
        table.add(state, state.userLevel, state.name(), state.isAlarm());
    }
    return table;
}

Json AlarmInputs::json(const std::vector<InputState>& states) {
    Json list = Json::array();
    for (const InputState& state : states) {
        Json object = state.json();
        object["userValidLevel"] = state.userLevel;
        object["state"] = state.name();
        list.push_back(object);
    }
    return list;
}
