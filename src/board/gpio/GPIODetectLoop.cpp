// The loop is closed, or open with the banks of a device. Of its groups each is watched, or lost as
// long as its watch is null: the bank is not there, or its watch has said so. A watch may also be
// there and have lines that its bank cannot have yet; that is the bank's affair. Groups, lines and
// handler belong to the controlling thread; the detector's thread, in pass(), turns a watched group
// into a lost one and, at every pass and at least each RETRY_INTERVAL, tries to turn it back. The
// handler is called at both turns, and not in between. A line that is added may turn its group,
// too, which is news for the lines that were there before: the next pass tells it.
//
// m_Mutex guards all of that. It is not held while a pass waits or the handler runs, so lines come
// and go meanwhile, and the handler may do anything, end the detector included. A pass waits once,
// for the descriptors of all watches, which stand in m_Epoll, but for how long it has asked before:
// whoever changes that, as a new line does, writes m_Wake, and so does who wants the thread to end.
// It then looks where something was readable, and at watches that want it in any case. The handler
// reads lines of banks that the wait has just told to be in place, so it need not ask again.
//
// What must never be seen: a change taken out of a watch without a call of the handler after it (a
// pass that is told to stop takes none); a line added while a pass waits that is noticed only with
// the next change of another; a descriptor that stays in m_Epoll when its watch has gone.

#include "board/gpio/GPIODetectLoop.h"

#include "board/runtime/ExceptionText.h"
#include "board/runtime/StopSignal.h"
#include "platform/Cause.h"
#include "platform/Diagnostics.h"

#include <cstdint>
#include <sys/eventfd.h>
#include <utility>

namespace {

constexpr char SOURCE[] = "GPIODetectLoop";
constexpr int RETRY_INTERVAL = 200; // milliseconds between looks for a lost bank
constexpr int WITHOUT_LIMIT = -1;

// What the descriptors in m_Epoll are told by: the watches' by group and place.
constexpr std::uint64_t WAKE = UINT64_MAX;
constexpr std::uint64_t PLACES = 8;

std::uint64_t tagOf(int group, std::size_t place) {
    return static_cast<std::uint64_t>(group) * PLACES + place;
}

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
    if (!m_Epoll->add(m_Wake.get(), WAKE, cause)) {
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
    if (std::exchange(m_IsWaiting, false)) {
        eventfd_write(m_Wake.get(), 1); // maybe without limit
    }
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
    GPIOBankTable::Attention attention;
    if (waitForEvents() && collectChanges(attention)) {
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
    endWatch(group);
    group.watch = std::move(watch);
    group.bank = bank.get();
    const std::vector<int> descriptors = group.watch->getDescriptors();
    for (std::size_t place = 0; place < descriptors.size(); ++place) {
        if (!m_Epoll->add(descriptors[place], tagOf(number, place), cause)) {
            endWatch(group);
            return false;
        }
    }
    return true;
}

void GPIODetectLoop::endWatch(Group& group) {
    if (group.watch != nullptr) {
        for (const int descriptor : group.watch->getDescriptors()) {
            m_Epoll->remove(descriptor);
        }
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
    const StopSignal::Bell bell(stop, m_Wake.get());
    if (!stop.isRequested()) {
        m_Epoll->wait(prepareWait(), [this](std::uint64_t tag) { noteReadable(tag); });
    }
    return !stop.isRequested();
}

// The shortest time that any group wants to wait, in milliseconds.
int GPIODetectLoop::prepareWait() {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_IsWaiting = true;
    int shortest = WITHOUT_LIMIT;
    for (const auto& [number, group] : m_Groups) {
        const int wanted = group.watch != nullptr ? group.watch->getTimeout() : RETRY_INTERVAL;
        if (wanted >= 0 && (shortest < 0 || wanted < shortest)) {
            shortest = wanted;
        }
    }
    return shortest;
}

void GPIODetectLoop::noteReadable(std::uint64_t tag) {
    if (tag == WAKE) {
        eventfd_t ignored = 0;
        eventfd_read(m_Wake.get(), &ignored);
        return;
    }
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const auto known = m_Groups.find(static_cast<int>(tag / PLACES));
    if (known != m_Groups.end()) { // else it has gone since
        known->second.readable |= 1U << tag % PLACES;
    }
}

// True when a watched line may have changed, its loss and return included.
bool GPIODetectLoop::collectChanges(GPIOBankTable::Attention& attention) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_IsWaiting = false;
    bool changed = false;
    for (auto& [number, group] : m_Groups) {
        const auto found = drain(group);
        if (found == GPIOBankWatch::CHANGED ||
            (found == GPIOBankWatch::LOST && restore(number, group))) {
            changed = true;
        }
        changed = std::exchange(group.isNews, false) || changed;
        if (group.watch != nullptr) {
            attention.add(group.bank);
        }
    }
    return changed;
}

GPIOBankWatch::Finding GPIODetectLoop::drain(Group& group) {
    if (group.watch == nullptr) {
        return GPIOBankWatch::LOST;
    }
    const unsigned readable = std::exchange(group.readable, 0);
    const bool isWanted = readable != 0 || group.watch->getTimeout() >= 0;
    return isWanted ? group.watch->drain(readable) : GPIOBankWatch::NOTHING;
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
