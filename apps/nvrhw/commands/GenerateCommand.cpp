#include "commands/GenerateCommand.h"

#include "config/Monitor.h"
#include "generate/BashCompletion.h"
#include "generate/Manual.h"
#include "lines/BoardLines.h"
#include "print/Console.h"
#include "print/LogBook.h"

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
        ->check(CLI::IsMember({"bash", "man", "inputs", "outputs", "monitors"}));
}

int GenerateCommand::run(const Settings& /*settings*/) {
    Console::print(text());
    return 0;
}

std::string GenerateCommand::text() const {
    if (m_What == "bash") {
        return BashCompletion(*m_Program).text();
    }
    if (m_What == "man") {
        return Manual::text(*m_Program);
    }
    if (m_What == "monitors") {
        return monitorIds();
    }
    const BoardLines lines;
    return idsOf(m_What == "inputs" ? lines.inputs() : lines.outputs());
}
