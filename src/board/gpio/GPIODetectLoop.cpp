// The loop is closed, or open with the banks of a device. Of its groups each is watched, or lost as
// long as its watch is null: the bank is not there, or its watch has said so. A watch may also be
// there and have lines that its bank cannot have yet; that is the bank's affair. Groups, lines and
// handler belong to the controlling thread; the detector's thread, in pass(), turns a watched group
// into a lost one and, at every pass and at least each RETRY_INTERVAL, tries to turn it back. The
// handler is called at both turns, and not in between. A line that is added may turn its group,
// too, which is news for the lines that were there before: the next pass tells it.
//
// m_Mutex guards all of that. It is not held while a pass waits or the handler runs, so lines come
// and go meanwhile, and the handler may do anything, end the detector included. A pass waits for
// the descriptors of all watches, which stand in m_Epoll, but for how long it has asked before:
// whoever changes that, as a new line does, writes m_Wake.
//
// What must never be seen: a change taken out of a watch without a call of the handler after it (a
// pass that is told to stop takes none); a line added while a pass waits that is noticed only with
// the next change of another; a descriptor that stays in m_Epoll when its watch has gone.

#include "board/gpio/GPIODetectLoop.h"

#include "board/runtime/ExceptionText.h"
#include "board/runtime/StopSignal.h"
#include "platform/Cause.h"
#include "platform/Diagnostics.h"

#include <iterator>
#include <poll.h>
#include <sys/eventfd.h>
#include <utility>

namespace {

constexpr char SOURCE[] = "GPIODetectLoop";
constexpr int RETRY_INTERVAL = 200; // milliseconds between looks for a lost bank
constexpr int WITHOUT_LIMIT = -1;

} // namespace

bool GPIODetectLoop::open(const std::string& device, Cause& cause) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    forgetLines();
    m_Banks.reset();
    if (!m_Epoll.has_value() && !makeDescriptors(cause)) {
        return false;
    }
    const auto banks = GPIOBankTable::of(device);
    cause = banks->device().fault();
    if (cause) {
        return false;
    }
    m_Banks = banks;
    return true;
}

bool GPIODetectLoop::makeDescriptors(Cause& cause) {
    m_Epoll.emplace();
    m_Wake = FileDescriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!m_Epoll->add(m_Wake.get(), cause)) {
        m_Epoll.reset();
        return false;
    }
    return true;
}

void GPIODetectLoop::close() {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    forgetLines();
    m_Banks.reset();
    m_Handler = nullptr;
}

void GPIODetectLoop::setHandler(int signalNumber, IGPIODetect::Handler handler) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_SignalNumber = signalNumber;
    m_Handler = handler;
}

bool GPIODetectLoop::isReady(Cause& cause) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    if (m_Banks == nullptr) {
        cause = {"the detector is not open"};
    } else if (m_Handler == nullptr) {
        cause = {"no handler is set"};
    }
    return !cause;
}

bool GPIODetectLoop::addLine(int group, int bit, Cause& cause) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    if (m_Banks == nullptr) {
        cause = {"the detector is not open"};
        return false;
    }
    if (group < 0 || bit < 0) {
        cause = {"groups and bits are not negative"};
        return false;
    }
    Group& lines = m_Groups[group];
    const bool isFirst = lines.bits.empty();
    lines.bits.insert(bit);
    if (lines.watch == nullptr || !lines.watch->add(bit, cause)) {
        const bool hasTurned = restore(group, lines); // if the bank is lost, pass() goes on trying
        lines.isNews = lines.isNews || (hasTurned && !isFirst);
    }
    eventfd_write(m_Wake.get(), 1); // a pass may be waiting without limit
    return true;
}

bool GPIODetectLoop::removeLine(int group, int bit, Cause& cause) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const auto known = m_Groups.find(group);
    if (known == m_Groups.end() || known->second.bits.count(bit) == 0) {
        cause = {"the line is not watched"};
        return false;
    }
    forget(group, bit);
    return true;
}

int GPIODetectLoop::pass() {
    const auto self = shared_from_this(); // the handler may release everything else
    if (waitForEvents() && collectChanges()) {
        callHandler();
    }
    return 0;
}

void GPIODetectLoop::forgetLines() {
    for (auto& numbered : m_Groups) {
        endWatch(numbered.second);
    }
    m_Groups.clear();
}

void GPIODetectLoop::forget(int number, int bit) {
    Group& group = m_Groups[number];
    group.bits.erase(bit);
    if (group.bits.empty()) {
        endWatch(group);
        m_Groups.erase(number);
    } else if (group.watch != nullptr) {
        group.watch->remove(bit);
    }
}

// Puts a new watch of the group's lines in place of the one it has.
bool GPIODetectLoop::beginWatch(int number, Group& group, Cause& cause) {
    const auto bank = m_Banks->find(number, *group.bits.begin(), cause);
    auto watch = bank != nullptr ? bank->watch(cause) : nullptr;
    if (watch == nullptr) {
        return false;
    }
    for (const int bit : group.bits) {
        if (!watch->add(bit, cause)) {
            return false;
        }
    }
    if (!m_Epoll->add(watch->getDescriptor(), cause)) {
        return false;
    }
    endWatch(group);
    group.watch = std::move(watch);
    return true;
}

void GPIODetectLoop::endWatch(Group& group) {
    if (group.watch != nullptr) {
        m_Epoll->remove(group.watch->getDescriptor());
        group.watch.reset();
    }
}

// Of a group without a watch, or with one that is lost. True when the lines may have changed: they
// are watched now, or are not any more.
bool GPIODetectLoop::restore(int number, Group& group) {
    Cause cause;
    const bool wasWatched = group.watch != nullptr;
    const bool restored = beginWatch(number, group, cause);
    if (!restored) {
        endWatch(group);
    }
    m_Banks->getFaultBook().note(GPIOFaultBook::WATCH, number, 0, cause);
    return restored || wasWatched;
}

// False when the thread shall stop.
bool GPIODetectLoop::waitForEvents() {
    StopSignal& stop = *StopSignal::ofThisThread();
    const int stopDescriptor = stop.getDescriptor();
    const int limit = stopDescriptor >= 0 ? timeout() : RETRY_INTERVAL;
    pollfd sources[] = {{stopDescriptor, POLLIN, 0}, {m_Epoll->getDescriptor(), POLLIN, 0}};
    poll(sources, std::size(sources), limit);
    return !stop.isRequested();
}

// The shortest time that any group wants to wait, in milliseconds.
int GPIODetectLoop::timeout() {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    int shortest = WITHOUT_LIMIT;
    for (const auto& [number, group] : m_Groups) {
        const int wanted = group.watch != nullptr ? group.watch->getTimeout() : RETRY_INTERVAL;
        if (wanted >= 0 && (shortest < 0 || wanted < shortest)) {
            shortest = wanted;
        }
    }
    return shortest;
}

// True when a watched line may have changed, its loss and return included.
bool GPIODetectLoop::collectChanges() {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    eventfd_t ignored = 0;
    eventfd_read(m_Wake.get(), &ignored);
    bool changed = false;
    for (auto& [number, group] : m_Groups) {
        const auto found = group.watch != nullptr ? group.watch->drain() : GPIOBankWatch::LOST;
        if (found == GPIOBankWatch::CHANGED ||
            (found == GPIOBankWatch::LOST && restore(number, group))) {
            changed = true;
        }
        changed = std::exchange(group.isNews, false) || changed;
    }
    return changed;
}

void GPIODetectLoop::callHandler() {
    IGPIODetect::Handler handler = nullptr;
    int signalNumber = 0;
    {
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        handler = m_Handler;
        signalNumber = m_SignalNumber;
    }
    if (handler == nullptr) {
        return;
    }
    const std::string cause = exceptionText([&] { handler(signalNumber); });
    if (!cause.empty()) {
        const std::string text = "the detection handler ended by an exception: " + cause;
        Logger::writeLog(GPIOFaultBook::SUBJECT, text.c_str(), SOURCE, __LINE__);
    }
}
