#include "commands/TriggerCommand.h"

#include "lines/OutputDrive.h"
#include "print/CommandError.h"
#include "print/Duration.h"
#include "print/EndSignals.h"

namespace {

constexpr int LOOK_MILLISECONDS = 10;

} // namespace

void TriggerCommand::setUp(CLI::App& app, Settings& /*settings*/) {
    app.add_option("OUTPUT", m_Id, "The output's id")->required()->type_name("");
    app.add_option("--mode", m_Mode, "steady (default), flash, or pulse, which lasts 10 ms")
        ->check(CLI::IsMember({"steady", "flash", "pulse"}))
        ->type_name("MODE");
    app.add_flag("--inverted", m_IsInverted, "Active is the other level than the valid level");
    app.add_option("--frequency", m_Frequency,
                   "Level changes per second while flashing, 0.01 to 20 (default 2)")
        ->check(CLI::Range(AlarmOutputs::LOWEST_FREQUENCY, AlarmOutputs::HIGHEST_FREQUENCY)
                    .description(""))
        ->type_name("HZ");
    app.add_option("--timeout", m_Timeout,
                   "End after this time: 500ms, 2s, 1m (up to 2147483ms; default: no end)")
        ->check(Duration::between(1, AlarmOutputs::LONGEST_TIMEOUT))
        ->type_name("DURATION");
    app.add_flag("--verbose", m_IsVerbose, "Print the level it begins with, and each change");
    app.footer("A steady output without --timeout stays on when the command has ended: cancel\n"
               "switches it off. While a flashing or timed output is on the command stays, and\n"
               "Ctrl-C switches it off. One of the two processes loses when a recorder drives the\n"
               "same line.");
}

AlarmOutMode TriggerCommand::wantedMode() const {
    const AlarmOutMode::Mode mode = AlarmOutputs::modeOf(m_Mode);
    const bool isFlash = mode == AlarmOutMode::Flash;
    if (m_Frequency > 0.0F && !isFlash) {
        throw CLI::ValidationError("--frequency", "only a flashing output has a frequency");
    }
    if (!m_Timeout.empty() && mode == AlarmOutMode::Pulse) {
        throw CLI::ValidationError("--timeout", "a pulse always lasts 10 ms");
    }
    return {mode, m_IsInverted ? AlarmOutMode::Inverted : AlarmOutMode::Direct,
            m_Timeout.empty() ? 0 : static_cast<int>(Duration::parse(m_Timeout)),
            isFlash && m_Frequency == 0.0F ? AlarmOutputs::DEFAULT_FREQUENCY : m_Frequency};
}

// False when a signal has come before the operation is over.
bool TriggerCommand::carryOn(OutputDrive& drive, const EndSignals& signals) const {
    try {
        while (drive.isRunning()) {
            if (signals.waitFor(LOOK_MILLISECONDS)) {
                return false;
            }
        }
    } catch (const CommandError&) {
        drive.tryToCancel(wantedMode()); // the next drive may succeed, and it is the last one
        throw;
    }
    return true;
}

int TriggerCommand::run(const Settings& settings) {
    const AlarmOutMode wanted = wantedMode();
    const EndSignals signals;
    OutputDrive drive(m_Id, settings, m_IsVerbose);
    drive.trigger(wanted);
    const bool isCutShort = !carryOn(drive, signals);
    if (isCutShort) {
        drive.cancel(wanted);
    }
    const bool staysOn = wanted.getMode() == AlarmOutMode::Steady && wanted.getTimeout() == 0;
    drive.printResult(wanted, isCutShort ? "cancelled" : staysOn ? "switched on" : "done");
    if (isCutShort && wanted.getTimeout() > 0) {
        throw CommandError("cut short after " +
                           Duration::text(static_cast<std::int64_t>(drive.seconds() * 1000)) +
                           " of " + Duration::text(wanted.getTimeout()));
    }
    return 0;
}
