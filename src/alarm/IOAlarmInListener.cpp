#include "alarm/IOAlarmInListener.h"

#include "platform/System.h"

namespace {

constexpr char SOURCE[] = "IOAlarmInListener";
constexpr int DETECT_SIGNAL = 10;

} // namespace

SafePointer<IOAlarmInManager> IOAlarmInListener::m_IOAlarmInManager;

IOAlarmInListener::IOAlarmInListener()
    : m_Detector(SafePointer<IGPIODetect>(new (SOURCE, __LINE__) GPIODetect)) {}

IOAlarmInListener::IOAlarmInListener(const SafePointer<IGPIODetect>& detector)
    : m_Detector(detector) {}

void IOAlarmInListener::setMachineConfigurationDetail(
    SafePointer<MachineConfigurationDetail>& detail) {
    m_AlarmInConfigItemList = detail->getAlarmInConfigItemList();
}

void IOAlarmInListener::setIOAlarmInManager(SafePointer<IOAlarmInManager>& manager) {
    m_IOAlarmInManager = manager;
}

int IOAlarmInListener::start() {
    if (m_Detector->open() != 0) {
        return 0;
    }
    if (m_Detector->setSignalHandler(DETECT_SIGNAL, notifyAlarm) == 0 && watchAllLines() != 0 &&
        m_Detector->startDetect() == 0) {
        return 1;
    }
    m_Detector->close();
    return 0;
}

int IOAlarmInListener::watchAllLines() {
    for (const auto& item : m_AlarmInConfigItemList->getHardwareConfigItemList()) {
        const auto signal = dynamic_pointer_cast<GPIOSignalConfigItem>(item);
        if (m_Detector->addDetectLine(SystemHelper::getPid(), signal->getGroup(),
                                      signal->getBitPosition()) != 0) {
            return 0;
        }
    }
    return 1;
}

int IOAlarmInListener::stop() { return m_Detector->stopDetect(); }

void IOAlarmInListener::notifyAlarm(int /*signalNumber*/) {
    m_IOAlarmInManager->notifyAlarmConsumers(false);
}
