#include "commands/Commands.h"
#include "config/MachineConfigurationDetail.h"
#include "config/Monitor.h"
#include "generate/Generated.h"
#include "platform/HardwareConfigure.h"
#include "print/Console.h"

#include <CLI/CLI.hpp>

namespace {

std::string ids(const std::string& what) {
    std::string text;
    if (what == "monitors") {
        std::vector<MonitorParam> params;
        Monitor().getAllMonitorParam(params);
        for (const MonitorParam& param : params) {
            text += std::to_string(param.getMonitorId()) + "\n";
        }
        return text;
    }
    MachineConfigurationDetail detail; // who completes a word must not open lines for it
    if (detail.initHardwareConfig() != 0) {
        for (const auto& item : (what == "inputs" ? detail.getAlarmInConfigItemList()
                                                  : detail.getAlarmOutConfigItemList())
                                    ->getHardwareConfigItemList()) {
            text +=
                std::to_string(dynamic_pointer_cast<GPIOSignalConfigItem>(item)->getId()) + "\n";
        }
    }
    return text;
}

std::string textOf(const std::string& what, const CLI::App& program) {
    if (what == "bash") {
        return bashCompletion(program);
    }
    return what == "man" ? manualText(program) : ids(what);
}

} // namespace

// The build and the completion call it, the help does not show it.
void addGenerate(Commands& commands) {
    const auto what = std::make_shared<std::string>();
    const CLI::App& program = commands.program();
    CLI::App& app = commands.add("generate", "Write the completion, the manual page's text, or ids",
                                 [what, &program](const Settings& /*settings*/) {
                                     Console::print(textOf(*what, program));
                                     return 0;
                                 });
    app.group(""); // hidden
    app.add_option("WHAT", *what)
        ->required()
        ->check(CLI::IsMember({"bash", "man", "inputs", "outputs", "monitors"}));
}
