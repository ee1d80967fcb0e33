// A group has a bank, or none until it is used. Whoever asks for it looks at the entry, each time,
// and exchanges a bank that the entry does not lead to any more: the old one is retired before the
// new one is opened, as both may be the same chip.
//
// m_Mutex guards the map and the exchange. The look at the entry, and all that a bank does, is
// without it: a bank that hangs holds up the others only while it is exchanged itself. So a bank
// may be exchanged while it is used; its operations then fail, and read() and drive() try once more
// with the one in its place.

#include "board/gpio/GPIOBankTable.h"

#include "board/gpio/kernel/KernelBank.h"
#include "board/gpio/simulated/SimulatedBank.h"
#include "platform/Cause.h"

#include <sys/stat.h>
#include <utility>

namespace {

constexpr char SOURCE[] = "GPIOBankTable";

struct Registry {
    XQMutex mutex;
    std::map<std::string, std::weak_ptr<GPIOBankTable>> tables NVRHW_GUARDED_BY(mutex);
};

Registry& registry() {
    static Registry* const instance = new Registry; // drivers may be made until the very end
    return *instance;
}

} // namespace

std::shared_ptr<GPIOBankTable> GPIOBankTable::of(const std::string& device) {
    Registry& known = registry();
    const XQMutexManager guard(known.mutex, SOURCE, __LINE__);
    std::weak_ptr<GPIOBankTable>& kept = known.tables[device];
    std::shared_ptr<GPIOBankTable> table = kept.lock();
    if (table == nullptr) {
        table = std::make_shared<GPIOBankTable>(device);
        kept = table;
    }
    return table;
}

GPIOBankTable::GPIOBankTable(std::string device)
    : m_Device(std::move(device)), m_FaultBook(std::make_shared<GPIOFaultBook>()) {}

std::shared_ptr<GPIOBank> GPIOBankTable::find(int group, int bit, Cause& cause) {
    if (m_Device.path().empty()) {
        cause = {"the driver is not initialised"};
        return nullptr;
    }
    if (group < 0 || bit < 0) {
        cause = {"groups and bits are not negative"};
        return nullptr;
    }
    const std::string path = m_Device.pathOf(group);
    struct stat entry {};
    auto known = findKnown(group);
    // Asked each time: it may go and come back. And without the lock: while one bank waits for its
    // chip, the others work on.
    if (known != nullptr && stat(path.c_str(), &entry) == 0 && known->isCurrent(entry)) {
        return known;
    }
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    std::shared_ptr<GPIOBank>& bank = m_Banks[group];
    const bool there = stat(path.c_str(), &entry) == 0;
    if (!there) {
        cause = Cause::fromErrno(path);
    }
    if (bank != nullptr && (!there || !bank->isCurrent(entry))) {
        bank->retire();
        bank.reset();
    }
    if (bank == nullptr && there) {
        bank = open(group, entry, cause);
    }
    return bank;
}

std::shared_ptr<GPIOBank> GPIOBankTable::findKnown(int group) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const auto known = m_Banks.find(group);
    return known != m_Banks.end() ? known->second : nullptr;
}

std::shared_ptr<GPIOBank> GPIOBankTable::open(int group, const struct stat& entry, Cause& cause) {
    switch (GPIODevice::kindOf(entry)) {
    case GPIODevice::SIMULATED:
        return std::make_shared<SimulatedBank>(m_Device.path(), group);
    case GPIODevice::KERNEL:
        return KernelBank::open(m_Device.path(), group, m_FaultBook, cause);
    case GPIODevice::NO_BANK:
        break;
    }
    cause = GPIODevice::notABank(m_Device.pathOf(group));
    return nullptr;
}

bool GPIOBankTable::read(std::vector<GPIOReading>& readings) {
    std::vector<GPIOReading*> open;
    open.reserve(readings.size());
    for (GPIOReading& reading : readings) {
        open.push_back(&reading);
    }
    readAll(open);
    bool all = true;
    for (const GPIOReading& reading : readings) {
        m_FaultBook->note(GPIOFaultBook::READ, reading.group, reading.bit, reading.cause);
        all = all && !reading.cause;
    }
    return all;
}

// Reads again when a bank turns out to have been exchanged meanwhile.
void GPIOBankTable::readAll(const std::vector<GPIOReading*>& readings) {
    std::map<std::shared_ptr<GPIOBank>, std::vector<GPIOReading*>> banks;
    for (GPIOReading* reading : readings) {
        if (const auto bank = find(reading->group, reading->bit, reading->cause)) {
            banks[bank].push_back(reading);
        }
    }
    for (const auto& [bank, lines] : banks) {
        bank->read(lines);
        Cause cause;
        const GPIOReading& first = *lines.front();
        const auto present = first.cause ? find(first.group, first.bit, cause) : bank;
        if (present == bank) {
            continue;
        }
        for (GPIOReading* reading : lines) {
            reading->cause = cause;
        }
        if (present != nullptr) {
            present->read(lines);
        }
    }
}

bool GPIOBankTable::drive(int group, int bit, int level) {
    Cause cause;
    const auto bank = find(group, bit, cause);
    bool driven = bank != nullptr && bank->drive(bit, level, cause);
    if (bank != nullptr && !driven) {
        Cause later;
        const auto present = find(group, bit, later);
        if (present != bank) { // exchanged meanwhile
            cause = later;
            driven = present != nullptr && present->drive(bit, level, cause);
        }
    }
    m_FaultBook->note(GPIOFaultBook::DRIVE, group, bit, cause);
    return driven;
}
