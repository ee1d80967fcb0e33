#include "ValidLevelCommand.h"

#include "Inputs.h"
#include "config/ConfigFileNameConst.h"
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
    const Lines lines;
    const Line& line = lines.input(m_Id);
    Inputs inputs(lines);
    if (m_Level >= 0) {
        inputs.manager()->setValidLevel(m_Id, m_Level);
    }
    const auto states = inputs.read({line});
    if (settings.json) {
        Json object = Inputs::json(states).front();
        object["stored"] = false;
        Output::printDocument(object);
        return 0;
    }
    Inputs::table(states).print();
    if (m_Level >= 0) {
        const std::string file =
            GlobalEnv::getInstance()->resolve(ConfigFileNameConst::getHardwareConfigFileName());
        Output::print("A trial: nothing is stored. For good, change validLevel of item " +
                      std::to_string(m_Id) + " in\n" + Output::harmless(file) + ".\n");
    }
    return 0;
}
