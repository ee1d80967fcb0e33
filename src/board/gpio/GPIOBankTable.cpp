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

#include <algorithm>
#include <sys/stat.h>
#include <utility>

namespace {

constexpr char SOURCE[] = "GPIOBankTable";
const Cause NEGATIVE{"groups and bits are not negative"};

struct Registry {
    XQMutex mutex;
    std::map<std::string, std::weak_ptr<GPIOBankTable>> tables NVRHW_GUARDED_BY(mutex);
};

thread_local std::vector<const GPIOBank*> attended; // which keeps its memory

bool isAttended(const GPIOBank* bank) {
    return std::find(attended.begin(), attended.end(), bank) != attended.end();
}

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

GPIOBankTable::Attention::~Attention() { attended.clear(); }

void GPIOBankTable::Attention::add(const GPIOBank* bank) { attended.push_back(bank); }

GPIOBankTable::GPIOBankTable(std::string device)
    : m_Device(std::move(device)), m_FaultBook(std::make_shared<GPIOFaultBook>()) {}

std::shared_ptr<GPIOBank> GPIOBankTable::find(int group, int bit, Cause& cause) {
    if (m_Device.path().empty()) {
        cause = {"the driver is not initialised"};
        return nullptr;
    }
    if (group < 0 || bit < 0) {
        cause = NEGATIVE;
        return nullptr;
    }
    return find(group, cause);
}

std::shared_ptr<GPIOBank> GPIOBankTable::find(int group, Cause& cause) {
    std::shared_ptr<GPIOBank> known;
    const char* path = nullptr;
    {
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        const Entry& entry = entryOf(group);
        known = entry.bank;
        path = entry.path.c_str();
    }
    struct stat present {};
    // Asked each time: it may go and come back. And without the lock: while one bank waits for its
    // chip, the others work on.
    if (known != nullptr && ((isAttended(known.get()) && known->isWatched()) ||
                             (stat(path, &present) == 0 && known->isCurrent(present)))) {
        return known;
    }
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    return exchange(group, entryOf(group), cause);
}

GPIOBankTable::Entry& GPIOBankTable::entryOf(int group) {
    const auto known = m_Entries.find(group);
    return known != m_Entries.end()
               ? known->second
               : m_Entries.insert({group, Entry{m_Device.pathOf(group)}}).first->second;
}

// Leaves a bank that is current alone.
std::shared_ptr<GPIOBank> GPIOBankTable::exchange(int group, Entry& entry, Cause& cause) {
    struct stat present {};
    const bool isThere = stat(entry.path.c_str(), &present) == 0;
    if (!isThere) {
        cause = Cause::fromErrno(entry.path);
    }
    if (entry.bank != nullptr && (!isThere || !entry.bank->isCurrent(present))) {
        entry.bank->retire();
        entry.bank.reset();
    }
    if (entry.bank == nullptr && isThere) {
        entry.bank = open(group, present, cause);
    }
    return entry.bank;
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

bool GPIOBankTable::read(GPIOBatch& batch) {
    for (GPIOBatch::Group& group : batch.groups()) {
        if (!group.readings.empty()) {
            read(group);
            group.bank.reset(); // one that goes is not kept until the next batch
        }
    }
    bool all = true;
    for (const GPIOReading& reading : batch.readings()) {
        m_FaultBook->note(GPIOFaultBook::READ, reading.group, reading.bit, reading.cause);
        all = all && !reading.cause;
    }
    return all;
}

// Reads again when the bank turns out to have been exchanged meanwhile.
void GPIOBankTable::read(GPIOBatch::Group& group) {
    std::vector<GPIOReading*>& readings = group.readings;
    readings.erase(std::remove_if(readings.begin(), readings.end(),
                                  [](GPIOReading* reading) {
                                      if (reading->bit < 0) {
                                          reading->cause = NEGATIVE;
                                      }
                                      return reading->bit < 0;
                                  }),
                   readings.end());
    if (readings.empty()) {
        return;
    }
    Cause cause;
    group.bank = find(group.number, 0, cause);
    if (group.bank != nullptr) {
        group.bank->read(readings);
        if (!readings.front()->cause) {
            return;
        }
        const auto present = find(group.number, 0, cause);
        if (present == group.bank) {
            return;
        }
        group.bank = present;
    }
    for (GPIOReading* reading : readings) {
        reading->cause = cause;
    }
    if (group.bank != nullptr) {
        group.bank->read(readings);
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
