#include "board/GPIOFaultBook.h"

#include "platform/Diagnostics.h"

namespace {

constexpr char SOURCE[] = "GPIOFaultBook";

constexpr const char* FAILS[] = {
    " cannot be read: ", " cannot be driven: ", " cannot be watched: "};
constexpr const char* WORKS[] = {" can be read again", " can be driven again", " is watched again"};

} // namespace

void GPIOFaultBook::note(Operation operation, int group, int bit, const std::string& cause) {
    if (cause.empty() && m_Count.load(std::memory_order_relaxed) == 0) { // the usual case: no lock
        return;
    }
    if (!enter({operation, group, operation == WATCH ? 0 : bit}, cause)) {
        return;
    }
    std::string text = "group " + std::to_string(group);
    if (operation != WATCH) {
        text += ", bit " + std::to_string(bit);
    }
    text += cause.empty() ? WORKS[operation] : FAILS[operation] + cause;
    Logger::writeLog("GPIOError", text.c_str(), SOURCE, __LINE__);
}

// True when this is news.
bool GPIOFaultBook::enter(const Key& key, const std::string& cause) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const auto known = m_Causes.find(key);
    bool news = false;
    if (cause.empty()) {
        news = known != m_Causes.end();
        if (news) {
            m_Causes.erase(known);
        }
    } else if (known == m_Causes.end() || known->second != cause) {
        m_Causes[key] = cause;
        news = true;
    }
    m_Count.store(m_Causes.size(), std::memory_order_relaxed);
    return news;
}
