#include "commands/ValidLevelCommand.h"

#include "config/ConfigFileNameConst.h"
#include "lines/AlarmInputs.h"
#include "platform/Diagnostics.h"

void ValidLevelCommand::setUp(CLI::App& app, Settings& /*settings*/) {
    app.add_option("INPUT", m_Id, "The input's id")->required()->type_name("");
    app.add_option("LEVEL", m_Level,
                   "0: in alarm at the configured valid level; 1: at the other level")
        ->check(CLI::IsMember({0, 1}))
        ->type_name("");
    app.footer(
        "A user valid level belongs to one process and ends with it: nothing stores it. LEVEL is\n"
        "therefore a trial. It changes neither the configuration nor a running recorder, which\n"
        "sets its own with IOAlarmInManager::setValidLevel(). For good, change validLevel in the\n"
        "hardware configuration.");
}

int ValidLevelCommand::run(const Settings& settings) {
    const BoardLines lines;
    const Line& line = lines.input(m_Id);
    AlarmInputs inputs(lines);
    if (m_Level >= 0) {
        inputs.manager()->setValidLevel(m_Id, m_Level);
    }
    const auto states = inputs.read({line});
    if (settings.json) {
        Json object = AlarmInputs::json(states).front();
        object["stored"] = false;
        Console::printDocument(object);
        return 0;
    }
    AlarmInputs::table(states).print();
    if (m_Level >= 0) {
        const std::string file =
            GlobalEnv::getInstance()->resolve(ConfigFileNameConst::getHardwareConfigFileName());
        Console::print("A trial: nothing is stored. For good, change validLevel of item " +
                       std::to_string(m_Id) + " in\n" + Console::harmless(file) + ".\n");
    }
    return 0;
}
