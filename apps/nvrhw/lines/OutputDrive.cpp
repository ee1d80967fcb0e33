#include "lines/OutputDrive.h"

#include "board/gpio/bank/GPIOFaultBook.h"
#include "platform/Gpio.h"
#include "platform/Insight.h"
#include "platform/base/Allocation.h"
#include "print/Console.h"
#include "print/LogBook.h"

#include <map>
#include <mutex>
#include <utility>

/// A driver in front of the real one: it sees every level that the library drives, and whether
/// that could be done. Thread-safe.
class DriveTrace : public IGPIO {
public:
    NVRHW_TRACKED

    DriveTrace(const SafePointer<IGPIO>& driver, OutputDrive::Listener listener)
        : m_Driver(driver), m_Listener(std::move(listener)) {}

    int init() override { return m_Driver->init(); }
    int uninit() override { return m_Driver->uninit(); }
    int get(int group, int bit, int& level) override { return m_Driver->get(group, bit, level); }
    int get(const std::vector<IOInfo>& lines, std::vector<IOState>& states) override {
        return m_Driver->get(lines, states);
    }

    int set(int group, int bit, int level) override {
        const int result = m_Driver->set(group, bit, level);
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_HasFailed = result == 0;
        if (m_HasFailed) {
            return result;
        }
        const auto [entry, isNew] = m_Levels.insert({{group, bit}, level});
        if (isNew || entry->second != level) {
            entry->second = level;
            m_Listener(level);
        }
        return result;
    }

    /// Whether the last drive of any line failed.
    bool hasFailed() const {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        return m_HasFailed;
    }

private:
    SafePointer<IGPIO> m_Driver;
    OutputDrive::Listener m_Listener;
    mutable std::mutex m_Mutex;
    std::map<std::pair<int, int>, int> m_Levels; // by group and bit
    bool m_HasFailed = false;
};

OutputDrive::OutputDrive(const std::string& which, Listener listener)
    : m_Trace(new ("OutputDrive", __LINE__)
                  DriveTrace(BoardLines::makeDriver(), std::move(listener))),
      m_Lines(SafePointer<IGPIO>(m_Trace)), m_Line(m_Lines.output(which)),
      m_Outputs(m_Lines.makeManager<IOAlarmOutManager>()) {}

void OutputDrive::trigger(const AlarmOutMode& mode) {
    cancel(mode);
    m_Outputs->triggerAlarm(m_Line.id);
    expectDriven();
}

void OutputDrive::cancel(const AlarmOutMode& mode) {
    m_Outputs->setAlarmOutMode(m_Line.id, mode); // which cancels
    expectDriven();
}

bool OutputDrive::isRunning() {
    expectDriven();
    SafePointer<GPIOOperator> gpio(m_Lines.gpioOperator());
    return !gpio->findRecord(m_Line.group, m_Line.bit).isNull();
}

OutputState OutputDrive::state(const AlarmOutMode& mode) const {
    OutputState state;
    state.line = m_Line;
    state.mode = mode;
    m_Lines.read({&state});
    return state;
}

void OutputDrive::expectDriven() const {
    if (m_Trace->hasFailed()) {
        Cause cause{"its line cannot be driven"};
        Insight::findLineFault(Insight::DRIVE, m_Line.group, m_Line.bit, cause);
        LogBook::forget(GPIOFaultBook::SUBJECT);
        throw CommandError("output " + std::to_string(m_Line.id) + ": group " +
                           std::to_string(m_Line.group) + ", bit " + std::to_string(m_Line.bit) +
                           " cannot be driven: " + cause.text());
    }
}
