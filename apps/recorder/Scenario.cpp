#include "Scenario.h"

#include "Output.h"
#include "platform/Diagnostics.h"
#include "platform/Time.h"

#include <fstream>
#include <stdexcept>
#include <string>

namespace {

SafePointer<GPIOSignalConfigItem> findItem(const SafePointer<HardwareConfigItemList>& list,
                                           int id) {
    for (const auto& item : list->getHardwareConfigItemList()) {
        if (item->getId() == id) {
            return dynamic_pointer_cast<GPIOSignalConfigItem>(item);
        }
    }
    throw std::runtime_error("the hardware configuration has no line with id " +
                             std::to_string(id));
}

void waitMilliseconds(long milliseconds) { TarvikTime::wait(TarvikTime(0, milliseconds * 1000)); }

} // namespace

Scenario::Scenario(const SafePointer<MachineConfigurationDetail>& detail,
                   const SafePointer<GPIOOperator>& gpio,
                   const SafePointer<IOAlarmOutManager>& outputs, AlarmPrinter& alarms)
    : m_Inputs(detail->getAlarmInConfigItemList()), m_Outputs(detail->getAlarmOutConfigItemList()),
      m_GPIO(gpio), m_OutManager(outputs), m_Alarms(alarms) {}

int Scenario::play() {
    moveInput(1, true);
    moveInput(10, true);
    moveInput(1, false);
    moveInput(10, false);

    trigger(1, {AlarmOutMode::Steady, AlarmOutMode::Direct, 400, 0.0F}, "hold for 400 ms");
    waitMilliseconds(700);
    expectAtRest(1);

    trigger(2, {AlarmOutMode::Flash, AlarmOutMode::Direct, 1000, 5.0F}, "flash at 5/s for 1 s");
    waitMilliseconds(1300);
    expectAtRest(2);

    trigger(3, {AlarmOutMode::Pulse, AlarmOutMode::Direct, 0, 0.0F}, "pulse of 10 ms");
    waitMilliseconds(100);
    expectAtRest(3);

    trigger(4, {AlarmOutMode::Steady, AlarmOutMode::Inverted, 0, 0.0F}, "hold, inverted");
    waitMilliseconds(200);
    say("cancel:  output 4");
    m_OutManager->cancelAlarm(4);
    waitMilliseconds(100);
    return m_Status;
}

void Scenario::moveInput(int id, bool toAlarm) {
    const auto item = findItem(m_Inputs, id);
    const int level = toAlarm ? item->getValidLevel() : 1 - item->getValidLevel();
    const std::string file =
        GlobalEnv::getInstance()->resolve("/dev/gpiodrv/" + std::to_string(item->getGroup()) + "/" +
                                          std::to_string(item->getBitPosition()));
    say("wire:    echo %d > %s", level, file.c_str());
    std::ofstream(file) << level << '\n';
    if (!m_Alarms.waitFor(id, toAlarm ? 1 : 0)) {
        fail("no message from input", id);
    }
}

void Scenario::trigger(int id, const AlarmOutMode& mode, const char* what) {
    say("trigger: output %d, %s", id, what);
    m_OutManager->setAlarmOutMode(id, mode);
    m_OutManager->triggerAlarm(id);
}

void Scenario::expectAtRest(int id) {
    const auto item = findItem(m_Outputs, id);
    int level = item->getValidLevel();
    if (m_GPIO->get(item->getGroup(), item->getBitPosition(), level) == 0 ||
        level == item->getValidLevel()) {
        fail("still active: output", id);
    }
}

void Scenario::fail(const char* what, int id) {
    say("FAILED:  %s %d", what, id);
    m_Status = 1;
}
