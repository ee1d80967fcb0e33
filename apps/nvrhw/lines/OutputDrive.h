#pragma once

#include "alarm/IOAlarmOutManager.h"
#include "lines/BoardLines.h"

#include <functional>

class DriveTrace;

/// One alarm output under the tool's hands: drives it through the library, tells what is driven,
/// and notices when that cannot be done.
class OutputDrive {
public:
    /// Called in whichever thread of the library drives the line, with each level that is not the
    /// one driven before; it must neither wait nor raise.
    using Listener = std::function<void(int level)>;

    /// Raises CommandError when there is no such output, by its id or name.
    OutputDrive(const std::string& which, Listener listener);

    int id() const { return m_Line.id; }

    /// These raise CommandError when the line cannot be driven.
    void trigger(const AlarmOutMode& mode);
    void cancel(const AlarmOutMode& mode);

    /// The same without a word about a failure.
    void tryToCancel(const AlarmOutMode& mode) { m_Outputs->setAlarmOutMode(m_Line.id, mode); }

    /// Whether a timed or flashing operation is still going on. Raises CommandError as above.
    bool isRunning();

    /// What the line is now, in this mode.
    OutputState state(const AlarmOutMode& mode) const;

private:
    void expectDriven() const;

    DriveTrace* m_Trace; // the operator's
    BoardLines m_Lines;
    const Line& m_Line;
    SafePointer<IOAlarmOutManager> m_Outputs;
};
