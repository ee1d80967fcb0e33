#include "alarm/GPIOAlarmIn.h"

#include "platform/Diagnostics.h"

#include <cstdio>

namespace {

constexpr int UNKNOWN_STATE = -1;

} // namespace

GPIOAlarmIn::GPIOAlarmIn(const SafePointer<GPIOOperator>& gpioOperator,
                         const SafePointer<GPIOSignalConfigItem>& signal)
    : m_Signal(signal), m_GPIOOperator(gpioOperator), m_LastState(UNKNOWN_STATE) {}

GPIOAlarmIn::~GPIOAlarmIn() = default;

int GPIOAlarmIn::getLevel(int& level) {
    const int group = m_Signal->getGroup();
    const int bit = m_Signal->getBitPosition();
    return m_GPIOOperator->get(group, bit, level);
}

void GPIOAlarmIn::setValidLevel(int level) {
    m_ValidLevel = level;
    if (getLevel(m_LastState) == 0 && GlobalEnv::getInstance()->getPrintFlag() != 0) {
        std::printf("getLevel() error\n");
    }
}

int GPIOAlarmIn::checkAlarmValid(int& alarm) {
    int level = 0;
    if (getLevel(level) == 0) {
        return 0;
    }
    return checkAlarmValid(level, alarm);
}

int GPIOAlarmIn::checkAlarmValid(int level, int& alarm) {
    const int state = m_Signal->getValidLevel() ^ level;
    if (state == m_LastState) {
        return 0;
    }
    alarm = m_ValidLevel == state ? 1 : 0;
    m_LastState = state;
    return 1;
}
