#include "Inputs.h"

namespace {

constexpr char SOURCE[] = "Inputs";

Table::Style styleOf(const InputState& state) {
    return !state.isReadable() ? Table::DOUBTFUL : state.isAlarm() ? Table::BAD : Table::GOOD;
}

} // namespace

Inputs::Inputs(const Lines& lines)
    : m_Manager(new (SOURCE, __LINE__) IOAlarmInManager), m_Reader(lines.gpioOperator()) {
    SafePointer<MachineConfigurationDetail> detail(lines.detail());
    m_Manager->setGPIOOperator(lines.gpioOperator());
    m_Manager->setMachineConfigurationDetail(detail);
    m_Manager->init();
}

std::vector<InputState> Inputs::read(const std::vector<Line>& lines) {
    std::vector<InputState> states;
    for (const LineState& state : m_Reader.read(lines)) {
        states.push_back({state});
        m_Manager->getValidLevel(state.line.id, states.back().userLevel);
    }
    return states;
}

Table Inputs::table(const std::vector<InputState>& states) {
    Table table({{"ID", Table::RIGHT},
                 {"NAME"},
                 {"BANK", Table::RIGHT},
                 {"BIT", Table::RIGHT},
                 {"VALID", Table::RIGHT},
                 {"USER", Table::RIGHT},
                 {"LEVEL", Table::RIGHT},
                 {"STATE"},
                 {"CAUSE"}});
    for (const InputState& state : states) {
        const Line& line = state.line;
        table.add({line.id,
                   line.name,
                   line.group,
                   line.bit,
                   line.validLevel,
                   state.userLevel,
                   state.isReadable() ? std::to_string(state.level) : "-",
                   {state.name(), styleOf(state)},
                   state.cause});
    }
    return table;
}

Json Inputs::json(const std::vector<InputState>& states) {
    Json list = Json::array();
    for (const InputState& state : states) {
        Json object = state.json();
        object["userValidLevel"] = state.userLevel;
        object["state"] = state.name();
        list.push_back(object);
    }
    return list;
}
