#pragma once

#include "commands/Settings.h"
#include "lines/AlarmOutputs.h"
#include "lines/BoardLines.h"
#include "lines/DriveTrace.h"

#include <memory>
#include <string>

/// One alarm output under the tool's hands: drives it through the library, tells what is driven,
/// and notices when that cannot be done.
class OutputDrive {
public:
    /// Raises CommandError when there is no output `id`. With `isVerbose` each level change is
    /// printed as it is driven.
    OutputDrive(int id, const Settings& settings, bool isVerbose);
    OutputDrive(const OutputDrive&) = delete;
    OutputDrive& operator=(const OutputDrive&) = delete;

    /// These raise CommandError when the line cannot be driven.
    void trigger(const AlarmOutMode& mode);
    void cancel(const AlarmOutMode& mode);

    /// The same without a word about a failure.
    void tryToCancel(const AlarmOutMode& mode) { m_Outputs.manager()->setAlarmOutMode(m_Id, mode); }

    /// Whether a timed or flashing operation is still going on. Raises CommandError as above.
    bool isRunning();

    /// Prints how it ended, with the level that the line has now.
    void printResult(const AlarmOutMode& mode, const std::string& result);

    /// Seconds since the object was made.
    double seconds() const;

private:
    void printLevel(int level) const;
    void expectDriven() const;

    const Settings& m_Settings;
    const int m_Id;
    const bool m_IsVerbose;
    const double m_Start;
    DriveTrace* m_Trace; // the operator's
    BoardLines m_Lines;
    const Line& m_Line;
    AlarmOutputs m_Outputs;
};
