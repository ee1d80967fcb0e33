#include "board/gpio/GPIODetector.h"

#include "platform/Diagnostics.h"
#include "platform/System.h"

namespace {

constexpr char SOURCE[] = "GPIODetector";
constexpr int DONE = 0;
constexpr int FAILED = -1;

int fail(const std::string& what, const Cause& cause) {
    Logger::writeLog("GPIOError", (what + ": " + cause.text()).c_str(), SOURCE, __LINE__);
    return FAILED;
}

std::string lineName(int group, int bit) {
    return "group " + std::to_string(group) + ", bit " + std::to_string(bit);
}

bool isThisProcess(int processId, Cause& cause) {
    if (processId == SystemHelper::getPid()) {
        return true;
    }
    cause = {"process " + std::to_string(processId) + " is not this one"};
    return false;
}

} // namespace

int GPIODetector::open(const std::string& device) {
    Cause cause;
    return m_Loop->open(device, cause) ? DONE : fail("the detector cannot be opened", cause);
}

void GPIODetector::close() {
    stopDetect();
    m_Loop->close();
}

int GPIODetector::setSignalHandler(int signalNumber, IGPIODetect::Handler handler) {
    if (handler == nullptr) {
        return fail("the detection handler cannot be set", {"it is null"});
    }
    m_Loop->setHandler(signalNumber, handler);
    return DONE;
}

int GPIODetector::addDetectLine(int processId, int group, int bit) {
    Cause cause;
    const bool added = isThisProcess(processId, cause) && m_Loop->addLine(group, bit, cause);
    return added ? DONE : fail(lineName(group, bit) + " cannot be watched", cause);
}

int GPIODetector::removeDetectLine(int processId, int group, int bit) {
    Cause cause;
    const bool removed = isThisProcess(processId, cause) && m_Loop->removeLine(group, bit, cause);
    return removed ? DONE : fail(lineName(group, bit) + " cannot be left unwatched", cause);
}

int GPIODetector::startDetect() {
    Cause cause;
    if (!m_Loop->isReady(cause)) {
        return fail("detection cannot start", cause);
    }
    return m_Thread.start() != 0 ? DONE
                                 : fail("detection cannot start", {"its thread does not run"});
}

int GPIODetector::stopDetect() {
    m_Thread.stop();
    return DONE;
}
