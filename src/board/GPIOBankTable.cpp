#include "board/GPIOBankTable.h"

#include "board/ErrnoText.h"
#include "board/SimulatedBank.h"

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

GPIOBankTable::GPIOBankTable(std::string device) : m_Device(std::move(device)) {}

bool GPIOBankTable::isPresent(std::string& cause) const {
    struct stat info {};
    if (stat(m_Device.c_str(), &info) != 0) {
        cause = errnoText(m_Device);
        return false;
    }
    if (!S_ISDIR(info.st_mode)) {
        cause = m_Device + ": not a directory of banks";
        return false;
    }
    return true;
}

std::shared_ptr<GPIOBank> GPIOBankTable::find(int group, int bit, std::string& cause) {
    if (m_Device.empty()) {
        cause = "the driver is not initialised";
        return nullptr;
    }
    if (group < 0 || bit < 0) {
        cause = "groups and bits are not negative";
        return nullptr;
    }
    const std::string path = m_Device + "/" + std::to_string(group);
    struct stat info {};
    if (stat(path.c_str(), &info) != 0) { // asked each time: a bank may go and come back
        cause = errnoText(path);
        return nullptr;
    }
    if (!S_ISDIR(info.st_mode)) {
        cause = path + ": not a bank, which is a directory with one file per line";
        return nullptr;
    }
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    std::shared_ptr<GPIOBank>& bank = m_Banks[group];
    if (bank == nullptr) {
        bank = std::make_shared<SimulatedBank>(m_Device, group);
    }
    return bank;
}

bool GPIOBankTable::read(std::vector<GPIOReading>& readings) {
    std::map<std::shared_ptr<GPIOBank>, std::vector<GPIOReading*>> banks;
    for (GPIOReading& reading : readings) {
        if (const auto bank = find(reading.group, reading.bit, reading.cause)) {
            banks[bank].push_back(&reading);
        }
    }
    for (const auto& [bank, lines] : banks) {
        bank->read(lines);
    }
    bool all = true;
    for (const GPIOReading& reading : readings) {
        m_FaultBook.note(GPIOFaultBook::READ, reading.group, reading.bit, reading.cause);
        all = all && reading.cause.empty();
    }
    return all;
}

bool GPIOBankTable::drive(int group, int bit, int level) {
    std::string cause;
    const auto bank = find(group, bit, cause);
    const bool driven = bank != nullptr && bank->drive(bit, level, cause);
    m_FaultBook.note(GPIOFaultBook::DRIVE, group, bit, cause);
    return driven;
}
