#include "platform/GpioDetect.h"

#include "board/gpio/GPIODetectLoop.h"
#include "platform/Diagnostics.h"
#include "platform/System.h"
#include "platform/Thread.h"

namespace {

constexpr char SOURCE[] = "GPIODetect";
constexpr int DONE = 0;
constexpr int FAILED = -1;

int fail(const std::string& what, const Cause& cause) {
    Logger::writeLog(GPIOFaultBook::SUBJECT, (what + ": " + cause.text()).c_str(), SOURCE,
                     __LINE__);
    return FAILED;
}

int fail(int group, int bit, const std::string& what, const Cause& cause) {
    GPIOFaultBook::tell(group, bit, what + ": " + cause.text());
    return FAILED;
}

bool isThisProcess(int processId, Cause& cause) {
    if (processId == SystemHelper::getPid()) {
        return true;
    }
    cause = {"process " + std::to_string(processId) + " is not this one"};
    return false;
}

} // namespace

// A detection loop and the thread that runs it.
struct GPIODetect::Impl {
    const std::shared_ptr<GPIODetectLoop> loop = std::make_shared<GPIODetectLoop>();
    GThread thread{function<int>(&GPIODetectLoop::pass, loop.get()), "GPIODetect",
                   function<int>(GThread::emptyFun), function<int>(GThread::emptyFun)};
};

GPIODetect::GPIODetect() : m_DeviceName(GPIODevice::PATH), m_Impl(new Impl) {}

GPIODetect::~GPIODetect() noexcept = default;

int GPIODetect::open() {
    const std::string device = GlobalEnv::getInstance()->resolve(m_DeviceName);
    Cause cause;
    return m_Impl->loop->open(device, cause) ? DONE : fail("the detector cannot be opened", cause);
}

void GPIODetect::close() {
    stopDetect();
    m_Impl->loop->close();
}

int GPIODetect::setSignalHandler(int signalNumber, Handler handler) {
    if (handler == nullptr) {
        return fail("the detection handler cannot be set", {"it is null"});
    }
    m_Impl->loop->setHandler(signalNumber, handler);
    return DONE;
}

int GPIODetect::addDetectLine(int processId, int group, int bit) {
    Cause cause;
    const bool added = isThisProcess(processId, cause) && m_Impl->loop->addLine(group, bit, cause);
    return added ? DONE : fail(group, bit, " cannot be watched", cause);
}

int GPIODetect::removeDetectLine(int processId, int group, int bit) {
    Cause cause;
    const bool removed =
        isThisProcess(processId, cause) && m_Impl->loop->removeLine(group, bit, cause);
    return removed ? DONE : fail(group, bit, " cannot be left unwatched", cause);
}

int GPIODetect::startDetect() {
    Cause cause;
    if (!m_Impl->loop->isReady(cause)) {
        return fail("detection cannot start", cause);
    }
    return m_Impl->thread.start() != 0
               ? DONE
               : fail("detection cannot start", {"its thread does not run"});
}

int GPIODetect::stopDetect() {
    m_Impl->thread.stop();
    return DONE;
}
