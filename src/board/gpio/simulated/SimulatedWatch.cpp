#include "board/gpio/simulated/SimulatedWatch.h"

#include "board/gpio/bank/GPIOLineTable.h"
#include "board/gpio/simulated/SimulatedBank.h"
#include "board/runtime/Cause.h"

#include <algorithm>
#include <sys/inotify.h>
#include <utility>

namespace {

constexpr std::size_t BUFFER_SIZE = 16384;
constexpr int MOST_BUFFERS = 64; // a writer that never pauses must not hold up the detector

// A change of mode or owner may make a line readable that was not.
constexpr std::uint32_t LINE_EVENTS =
    IN_MODIFY | IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_CREATE | IN_DELETE | IN_ATTRIB;
constexpr std::uint32_t ENTRY_EVENTS = IN_MOVED_TO | IN_MOVED_FROM | IN_CREATE | IN_DELETE;
constexpr std::uint32_t SELF_EVENTS = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t LOSS = SELF_EVENTS | IN_IGNORED | IN_UNMOUNT | IN_Q_OVERFLOW;

} // namespace

std::unique_ptr<GPIOBankWatch> SimulatedWatch::begin(const std::string& device, int group,
                                                     Cause& cause) {
    FileDescriptor inotify(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (!inotify.isValid()) {
        cause = Cause::fromErrno("", "inotify_init1");
        return nullptr;
    }
    std::unique_ptr<SimulatedWatch> watch(new SimulatedWatch(std::move(inotify), device, group));
    const auto observe = [&](const std::string& path, std::uint32_t events) {
        const int descriptor =
            inotify_add_watch(watch->getDescriptor(), path.c_str(), events | IN_ONLYDIR);
        if (descriptor < 0) {
            cause = Cause::fromErrno("", "inotify_add_watch " + path);
        }
        return descriptor;
    };
    // The device first: if the bank is exchanged in between, its watch tells.
    watch->m_DeviceWatch = observe(device, ENTRY_EVENTS | SELF_EVENTS);
    if (watch->m_DeviceWatch < 0) {
        return nullptr;
    }
    if (observe(device + "/" + watch->m_Entry, LINE_EVENTS | SELF_EVENTS) < 0) {
        return nullptr;
    }
    return watch;
}

SimulatedWatch::SimulatedWatch(FileDescriptor inotify, const std::string& device, int group)
    : m_Inotify(std::move(inotify)), m_Device(device), m_Group(group),
      m_Entry(std::to_string(group)) {}

bool SimulatedWatch::add(int bit, Cause& /*cause*/) {
    const std::string file = std::to_string(bit);
    const int debounce = GPIOLineTable::get(m_Group, bit).debounce;
    m_Files[file] = debounce;
    const std::string path = m_Device + "/" + m_Entry + "/" + file;
    if (debounce != 0 && !SimulatedBank::hasHeld(path, debounce + SimulatedBank::CLOCK_TICK)) {
        judge(file); // nobody reads this level before it has held
    }
    return true;
}

void SimulatedWatch::remove(int bit) {
    m_Files.erase(std::to_string(bit));
    m_Due.erase(std::to_string(bit));
}

int SimulatedWatch::getTimeout() const {
    if (m_Due.empty()) {
        return -1;
    }
    const auto next =
        std::min_element(m_Due.begin(), m_Due.end(), [](const auto& one, const auto& other) {
            return one.second < other.second;
        });
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(next->second - Clock::now());
    return std::max(0, static_cast<int>(left.count()));
}

GPIOBankWatch::Finding SimulatedWatch::drain() {
    const Finding found = takeEvents();
    return std::max(found, takeDue());
}

GPIOBankWatch::Finding SimulatedWatch::takeEvents() {
    alignas(inotify_event) char buffer[BUFFER_SIZE];
    Finding found = NOTHING;
    for (int i = 0; i < MOST_BUFFERS; ++i) {
        const ssize_t size = ::read(m_Inotify.get(), buffer, sizeof(buffer));
        if (size <= 0) {
            return size == 0 || errno == EAGAIN || errno == EINTR ? found : LOST;
        }
        for (const char* next = buffer; next < buffer + size;) {
            const auto* event = reinterpret_cast<const inotify_event*>(next);
            found = std::max(found, judge(*event));
            next += sizeof(inotify_event) + event->len;
        }
    }
    return found;
}

GPIOBankWatch::Finding SimulatedWatch::judge(const inotify_event& event) {
    if ((event.mask & LOSS) != 0) { // an overflow may have swallowed the loss of the bank
        return LOST;
    }
    const std::string name = event.len != 0 ? event.name : "";
    if (event.wd == m_DeviceWatch) {
        return name == m_Entry ? LOST : NOTHING;
    }
    return name.empty() ? CHANGED : judge(name);
}

GPIOBankWatch::Finding SimulatedWatch::judge(const std::string& file) {
    const auto covered = m_Files.find(file);
    if (covered == m_Files.end()) {
        return NOTHING;
    }
    if (covered->second == 0) {
        return CHANGED;
    }
    // A little longer than the bank waits, as it is to give the new level then.
    m_Due[file] =
        Clock::now() + std::chrono::milliseconds(covered->second + SimulatedBank::CLOCK_TICK + 1);
    return NOTHING;
}

GPIOBankWatch::Finding SimulatedWatch::takeDue() {
    Finding found = NOTHING;
    for (auto due = m_Due.begin(); due != m_Due.end();) {
        if (due->second <= Clock::now()) {
            due = m_Due.erase(due);
            found = CHANGED;
        } else {
            ++due;
        }
    }
    return found;
}
