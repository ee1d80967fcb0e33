#include "alarm/GPIOAlarmOut.h"

namespace {

constexpr int FLASH_FIRST_LEVEL = 1;

int inactiveLevel(int validLevel, int validSignal) { return validLevel == validSignal ? 1 : 0; }

} // namespace

GPIOAlarmOut::GPIOAlarmOut(const SafePointer<GPIOOperator>& gpioOperator,
                           const SafePointer<GPIOSignalConfigItem>& signal)
    : m_GPIOOperator(gpioOperator), m_Signal(signal) {}

GPIOAlarmOut::~GPIOAlarmOut() = default;

void GPIOAlarmOut::cancelAlarm() {
    const int group = m_Signal->getGroup();
    const int bit = m_Signal->getBitPosition();
    const int level = inactiveLevel(m_Signal->getValidLevel(), m_AlarmOutMode.getValidSignal());
    m_GPIOOperator->set(group, bit, AlarmOutMode::Steady, level, level, 0.0F, 0);
}

void GPIOAlarmOut::triggerAlarm() {
    const int group = m_Signal->getGroup();
    const int bit = m_Signal->getBitPosition();
    const int validLevel = m_Signal->getValidLevel();
    const int validSignal = m_AlarmOutMode.getValidSignal();
    const AlarmOutMode::Mode mode = m_AlarmOutMode.getMode();

    int level = 0;
    int stopLevel = 0;
    switch (mode) {
    case AlarmOutMode::Flash:
        level = FLASH_FIRST_LEVEL;
        stopLevel = inactiveLevel(validLevel, validSignal);
        break;
    case AlarmOutMode::Steady:
    case AlarmOutMode::Pulse:
        level = validSignal ^ validLevel;
        stopLevel = level == 0 ? 1 : 0;
        break;
    default:
        return;
    }
    m_GPIOOperator->set(group, bit, mode, level, stopLevel, m_AlarmOutMode.getFrequency(),
                        m_AlarmOutMode.getTimeout());
}
