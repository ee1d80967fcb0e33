#include "GenerateCommand.h"

#include "BashCompletion.h"
#include "Lines.h"
#include "LogBook.h"
#include "ManCommands.h"
#include "Output.h"
#include "config/Monitor.h"
#include "generate/ConfigurationTables.h"

#include <vector>

namespace {

std::string idsOf(const std::vector<Line>& lines) {
    std::string ids;
    for (const Line& line : lines) {
        ids += std::to_string(line.id) + "\n";
    }
    return ids;
}

std::string monitorIds() {
    std::vector<MonitorParam> params;
    Monitor().getAllMonitorParam(params);
    std::string ids;
    for (const MonitorParam& param : params) {
        ids += std::to_string(param.getMonitorId()) + "\n";
    }
    return ids;
}

} // namespace

void GenerateCommand::setUp(CLI::App& app, Settings& /*settings*/) {
    app.group(""); // hidden
    m_Program = app.get_parent();
    app.add_option("WHAT", m_What)
        ->required()
        ->check(CLI::IsMember({"bash", "man", "configuration", "inputs", "outputs", "monitors"}));
}

int GenerateCommand::run(const Settings& /*settings*/) {
    Output::print(text());
    return 0;
}

std::string GenerateCommand::text() const {
    if (m_What == "bash") {
        return BashCompletion(*m_Program).text();
    }
    if (m_What == "man") {
        return ManCommands::text(*m_Program);
    }
    if (m_What == "configuration") {
        return configurationTables();
    }
    if (m_What == "monitors") {
        return monitorIds();
    }
    const Lines lines;
    return idsOf(m_What == "inputs" ? lines.inputs() : lines.outputs());
}
