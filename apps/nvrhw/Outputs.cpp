#include "Outputs.h"

namespace {

constexpr char SOURCE[] = "Outputs";

struct ModeName {
    const char* name;
    AlarmOutMode::Mode mode;
};

constexpr ModeName MODE_NAMES[] = {{"steady", AlarmOutMode::Steady},
                                   {"flash", AlarmOutMode::Flash},
                                   {"pulse", AlarmOutMode::Pulse}};

Table::Style styleOf(const OutputState& state) {
    return !state.isReadable() ? Table::DOUBTFUL : state.isActive() ? Table::BAD : Table::GOOD;
}

} // namespace

Outputs::Outputs(const Lines& lines)
    : m_Manager(new (SOURCE, __LINE__) IOAlarmOutManager), m_Reader(lines.gpioOperator()) {
    SafePointer<MachineConfigurationDetail> detail(lines.detail());
    m_Manager->setGPIOOperator(lines.gpioOperator());
    m_Manager->setMachineConfigurationDetail(detail);
    m_Manager->init();
}

std::vector<OutputState> Outputs::read(const std::vector<Line>& lines) {
    std::vector<OutputState> states;
    for (const LineState& state : m_Reader.read(lines)) {
        states.push_back({state, AlarmOutMode()});
        m_Manager->getAlarmOutMode(state.line.id, states.back().mode);
    }
    return states;
}

Table Outputs::table(const std::vector<OutputState>& states) {
    Table table({{"ID", Table::RIGHT},
                 {"NAME"},
                 {"BANK", Table::RIGHT},
                 {"BIT", Table::RIGHT},
                 {"VALID", Table::RIGHT},
                 {"MODE"},
                 {"LEVEL", Table::RIGHT},
                 {"STATE"},
                 {"CAUSE"}});
    for (const OutputState& state : states) {
        const Line& line = state.line;
        table.add({line.id,
                   line.name,
                   line.group,
                   line.bit,
                   line.validLevel,
                   modeName(state.mode.getMode()),
                   state.isReadable() ? std::to_string(state.level) : "-",
                   {state.name(), styleOf(state)},
                   state.cause});
    }
    return table;
}

Json Outputs::json(const std::vector<OutputState>& states) {
    Json list = Json::array();
    for (const OutputState& state : states) {
        Json object = state.json();
        object["mode"] = modeName(state.mode.getMode());
        object["state"] = state.name();
        list.push_back(object);
    }
    return list;
}

std::string Outputs::modeName(AlarmOutMode::Mode mode) {
    for (const ModeName& known : MODE_NAMES) {
        if (known.mode == mode) {
            return known.name;
        }
    }
    return std::to_string(mode);
}

AlarmOutMode::Mode Outputs::modeOf(const std::string& name) {
    for (const ModeName& known : MODE_NAMES) {
        if (known.name == name) {
            return known.mode;
        }
    }
    return AlarmOutMode::Steady;
}
