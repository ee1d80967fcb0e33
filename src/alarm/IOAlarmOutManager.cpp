#include "alarm/IOAlarmOutManager.h"

#include "alarm/GPIOAlarmOut.h"
#include "platform/Diagnostics.h"

#include <cstdio>

namespace {

constexpr char SOURCE[] = "IOAlarmOutManager";

void traceMode(const char* prefix, int id, const AlarmOutMode& mode) {
    if (GlobalEnv::getInstance()->getPrintFlag() == 0) {
        return;
    }
    std::printf("%sIOAlarmOutManager::setAlarmOutMode,alarmId=%d,,mode=%d,validSignal=%d,"
                "Frequency=%f,timeout=%d\n",
                prefix, id, static_cast<int>(mode.getMode()),
                static_cast<int>(mode.getValidSignal()), static_cast<double>(mode.getFrequency()),
                mode.getTimeout());
}

} // namespace

void IOAlarmOutManager::setGPIOOperator(const SafePointer<GPIOOperator>& gpioOperator) {
    m_GPIOOperator = gpioOperator;
}

void IOAlarmOutManager::setMachineConfigurationDetail(
    SafePointer<MachineConfigurationDetail>& detail) {
    m_AlarmOutConfigItemList = detail->getAlarmOutConfigItemList();
    m_Detail = detail;
}

int IOAlarmOutManager::init() {
    initRealAlarmOut();
    return 1;
}

void IOAlarmOutManager::initRealAlarmOut() {
    for (const auto& item : m_AlarmOutConfigItemList->getHardwareConfigItemList()) {
        const auto signal = dynamic_pointer_cast<GPIOSignalConfigItem>(item);
        const SafePointer<GPIOAlarmOut> alarmOut(new (SOURCE, __LINE__)
                                                     GPIOAlarmOut(m_GPIOOperator, signal));
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        m_AlarmOuts.insert({signal->getId(), SafePointer<IAlarmOut>(alarmOut)});
    }
}

void IOAlarmOutManager::triggerAlarm(int id) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const auto found = m_AlarmOuts.find(id);
    if (found != m_AlarmOuts.end()) {
        found->second->triggerAlarm();
    }
}

void IOAlarmOutManager::cancelAlarm(int id) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const auto found = m_AlarmOuts.find(id);
    if (found != m_AlarmOuts.end()) {
        found->second->cancelAlarm();
    }
}

int IOAlarmOutManager::getAlarmOutMode(int id, AlarmOutMode& mode) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const auto found = m_AlarmOuts.find(id);
    if (found == m_AlarmOuts.end()) {
        return 0;
    }
    mode = found->second->getAlarmOutMode();
    return 1;
}

int IOAlarmOutManager::setAlarmOutMode(int id, const AlarmOutMode& mode) {
    traceMode("", id, mode);
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const auto found = m_AlarmOuts.find(id);
    if (found == m_AlarmOuts.end()) {
        traceMode("222\t", id, mode);
        return 0;
    }
    traceMode("333\t", id, mode);
    found->second->setAlarmOutMode(mode);
    found->second->cancelAlarm();
    return 1;
}
