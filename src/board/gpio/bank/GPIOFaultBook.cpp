#include "board/gpio/bank/GPIOFaultBook.h"

#include "platform/Diagnostics.h"

namespace {

constexpr char SOURCE[] = "GPIOFaultBook";

constexpr const char* FAILS[] = {
    " cannot be read: ", " cannot be driven: ", " cannot be watched: "};
constexpr const char* WORKS[] = {" can be read again", " can be driven again", " is watched again"};

std::string groupName(int group) { return "group " + std::to_string(group); }

std::string lineName(int group, int bit) {
    return groupName(group) + ", bit " + std::to_string(bit);
}

void write(const std::string& record) {
    Logger::writeLog(GPIOFaultBook::SUBJECT, record.c_str(), SOURCE, __LINE__);
}

} // namespace

bool GPIOFaultBook::find(Operation operation, int group, int bit, Cause& cause) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const auto known = m_Faults.find(key(operation, group, bit));
    if (known == m_Faults.end()) {
        return false;
    }
    cause = known->second.cause;
    return true;
}

void GPIOFaultBook::note(Operation operation, int group, int bit, const Cause& cause) {
    if (!cause && m_Count.load(std::memory_order_relaxed) == 0) { // the usual case: no lock
        return;
    }
    int failures = 0;
    if (!enter(key(operation, group, bit), cause, failures)) {
        return;
    }
    std::string text = cause ? FAILS[operation] + cause.text() : WORKS[operation];
    if (failures != 0) {
        text += " (failed " + std::to_string(failures) + " times before)";
    }
    write((operation == WATCH ? groupName(group) : lineName(group, bit)) + text);
}

void GPIOFaultBook::tell(int group, int bit, const std::string& text) {
    write(lineName(group, bit) + text);
}

// True when this is news; then `failures` is how often it had failed for the cause before.
bool GPIOFaultBook::enter(const Key& key, const Cause& cause, int& failures) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const auto known = m_Faults.find(key);
    if (known != m_Faults.end() && known->second.cause == cause) {
        ++known->second.count;
        return false;
    }
    if (known != m_Faults.end()) {
        failures = known->second.count;
    }
    const bool news = cause || known != m_Faults.end();
    if (cause) {
        m_Faults[key] = {cause, 1};
    } else if (known != m_Faults.end()) {
        m_Faults.erase(known);
    }
    m_Count.store(m_Faults.size(), std::memory_order_relaxed);
    return news;
}
