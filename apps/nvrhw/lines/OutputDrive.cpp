#include "lines/OutputDrive.h"

#include "gpio/GPIOOperateRecord.h"
#include "print/CommandError.h"
#include "print/LogBook.h"

#include <cmath>
#include <cstdio>

namespace {

constexpr char SOURCE[] = "OutputDrive";
constexpr double MICROSECONDS = 1e6;

} // namespace

OutputDrive::OutputDrive(int id, const Settings& settings, bool isVerbose)
    : m_Settings(settings), m_Id(id), m_IsVerbose(isVerbose), m_Start(GPIOOperateRecord::now()),
      m_Trace(new (SOURCE, __LINE__)
                  DriveTrace(BoardLines::makeDriver(), [this](int level) { printLevel(level); })),
      m_Lines(SafePointer<IGPIO>(m_Trace)), m_Line(m_Lines.output(id)), m_Outputs(m_Lines) {}

void OutputDrive::trigger(const AlarmOutMode& mode) {
    m_Outputs.manager()->setAlarmOutMode(m_Id, mode);
    expectDriven();
    m_Outputs.manager()->triggerAlarm(m_Id);
    expectDriven();
}

void OutputDrive::cancel(const AlarmOutMode& mode) {
    m_Outputs.manager()->setAlarmOutMode(m_Id, mode); // which cancels
    expectDriven();
}

bool OutputDrive::isRunning() {
    expectDriven();
    return !m_Lines.gpioOperator()->findRecord(m_Line.group, m_Line.bit).isNull();
}

void OutputDrive::printResult(const AlarmOutMode& mode, const std::string& result) {
    OutputState state = m_Outputs.read({m_Line}).front();
    state.mode = mode;
    if (m_Settings.json) {
        Json object = state.json();
        object["mode"] = AlarmOutputs::modeName(mode.getMode());
        object["state"] = state.name();
        object["result"] = result;
        Console::printLine(object);
        return;
    }
    const std::string level = state.isReadable() ? "its level is " + std::to_string(state.level)
                                                 : "but it is unreadable: " + state.cause;
    Console::print("output " + std::to_string(m_Id) + ": " + result + ", " + level + "\n");
}

double OutputDrive::seconds() const { return (GPIOOperateRecord::now() - m_Start) / MICROSECONDS; }

// In whichever thread of the library drives: nothing may be raised from here.
void OutputDrive::printLevel(int level) const {
    if (!m_IsVerbose) {
        return;
    }
    try {
        if (m_Settings.json) {
            Console::printLine({{"seconds", std::round(seconds() * 1000) / 1000},
                                {"output", m_Id},
                                {"level", level}});
        } else {
            char text[64];
            std::snprintf(text, sizeof text, "[%7.3f] output %d -> %d\n", seconds(), m_Id, level);
            Console::print(text);
        }
    } catch (const std::exception&) {
        return; // the operation matters more than its trace
    }
}

void OutputDrive::expectDriven() const {
    if (m_Trace->hasFailed()) {
        throw CommandError("output " + std::to_string(m_Id) + ": " +
                           LogBook::takeCause("its line cannot be driven"));
    }
}
