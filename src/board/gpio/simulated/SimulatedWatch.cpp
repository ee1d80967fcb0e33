// A covered line is at rest, or due at a time (in m_Due): its file was written and its debounce
// time runs; each further write begins it anew. A line without debounce time is always at rest.
// Events and time move it, in drain(), which the detector's thread calls at the latest when
// getTimeout() says so; no other thread touches a watch, so there is no lock.
//
// What must never be seen: the end of a debounce time told before SimulatedBank gives the new level
// (it judges by the file's time, whose clock is coarser than ours: hence the tick more), and a bank
// that was exchanged while the watch began (hence the device is watched before the bank).

#include "board/gpio/simulated/SimulatedWatch.h"

#include "board/gpio/bank/GPIOLineSettingsTable.h"
#include "board/gpio/simulated/SimulatedBank.h"

#include <algorithm>
#include <utility>

namespace {

// A change of mode or owner may make a line readable that was not.
constexpr std::uint32_t LINES = DirectoryEvents::ENTRIES | IN_MODIFY | IN_CLOSE_WRITE | IN_ATTRIB;

} // namespace

std::unique_ptr<GPIOBankWatch> SimulatedWatch::begin(const std::string& device, int group,
                                                     Cause& cause) {
    std::unique_ptr<SimulatedWatch> watch(new SimulatedWatch(device, group));
    DirectoryEvents& events = watch->m_Events;
    if (!events.begin(cause)) {
        return nullptr;
    }
    // The device first: if the bank is exchanged in between, its watch tells.
    watch->m_DeviceNumber = events.watch(device, DirectoryEvents::ENTRIES, cause);
    if (watch->m_DeviceNumber < 0 ||
        events.watch(device + "/" + watch->m_Entry, LINES, cause) < 0) {
        return nullptr;
    }
    return watch;
}

SimulatedWatch::SimulatedWatch(const std::string& device, int group)
    : m_Device(device), m_Group(group), m_Entry(std::to_string(group)) {}

bool SimulatedWatch::add(int bit, Cause& /*cause*/) {
    const std::string file = std::to_string(bit);
    const int debounce = GPIOLineSettingsTable::get(m_Group, bit).debounce;
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

GPIOBankWatch::Finding SimulatedWatch::drain(unsigned readable) {
    Finding found = NOTHING;
    if (readable != 0) {
        m_Events.take(
            [&](const DirectoryEvents::Event& event) { found = std::max(found, judge(event)); });
    }
    return std::max(found, takeDue());
}

GPIOBankWatch::Finding SimulatedWatch::judge(const DirectoryEvents::Event& event) {
    if (event.isLoss) { // dropped events may have swallowed the loss of the bank
        return LOST;
    }
    if (event.directory == m_DeviceNumber) {
        return event.name == m_Entry ? LOST : NOTHING;
    }
    return event.name.empty() ? CHANGED : judge(event.name);
}

GPIOBankWatch::Finding SimulatedWatch::judge(const std::string& file) {
    const auto covered = m_Files.find(file);
    if (covered == m_Files.end()) {
        return NOTHING;
    }
    if (covered->second == 0 ||
        SimulatedBank::hasHeld(m_Device + "/" + m_Entry + "/" + file,
                               covered->second + SimulatedBank::CLOCK_TICK)) {
        m_Due.erase(file); // a line that has gone does not bounce
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
