#include "application/InputWatch.h"

#include "platform/System.h"

namespace nvrhw {

namespace {

constexpr int SIGNAL_NUMBER = 10; // what the factory's detector uses; the handler does not care

// Changed only while no detector of this room runs.
SafePointer<IOAlarmInManager>& watched() {
    static SafePointer<IOAlarmInManager> manager;
    return manager;
}

} // namespace

InputWatch::InputWatch(const SafePointer<IOAlarmInManager>& manager) { watched() = manager; }

InputWatch::~InputWatch() {
    m_Detector.close();
    watched().dec_reference();
}

bool InputWatch::start(const std::vector<LineUse>& uses) {
    if (m_Detector.open() != 0 || m_Detector.setSignalHandler(SIGNAL_NUMBER, look) != 0) {
        return false;
    }
    for (const LineUse& use : uses) {
        if (m_Detector.addDetectLine(SystemHelper::getPid(), use.line.bank, use.line.bit) != 0) {
            return false;
        }
    }
    return m_Detector.startDetect() == 0;
}

void InputWatch::look(int /*signalNumber*/) { watched()->notifyAlarmConsumers(false); }

} // namespace nvrhw
