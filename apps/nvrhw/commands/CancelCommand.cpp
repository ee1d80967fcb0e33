#include "commands/CancelCommand.h"

#include "lines/OutputDrive.h"

void CancelCommand::setUp(CLI::App& app, Settings& /*settings*/) {
    app.add_option("OUTPUT", m_Id, "The output's id")->required()->type_name("");
    app.add_flag("--inverted", m_IsInverted, "It was triggered with --inverted");
    app.add_flag("--verbose", m_IsVerbose, "Print the level change");
    app.footer(
        "An operation that another process carries on, a recorder or a trigger that is still\n"
        "running, drives the line again: end it there.");
}

int CancelCommand::run(const Settings& settings) {
    const AlarmOutMode mode(AlarmOutMode::Steady,
                            m_IsInverted ? AlarmOutMode::Inverted : AlarmOutMode::Direct, 0, 0.0F);
    OutputDrive drive(m_Id, settings, m_IsVerbose);
    drive.cancel(mode);
    drive.printResult(mode, "switched off");
    return 0;
}
