#include "board/runtime/ObserverList.h"

#include "board/runtime/ExceptionText.h"
#include "platform/Diagnostics.h"

#include <algorithm>
#include <string>

namespace {

constexpr char SOURCE[] = "ISubject";

thread_local int notificationDepth = 0;

void deliver(IObserver& observer, IMessage* message) {
    ++notificationDepth;
    const std::string cause = exceptionText([&] { observer.update(message); });
    --notificationDepth;
    if (!cause.empty()) {
        const std::string text = "an observer ended its update by an exception: " + cause;
        Logger::writeLog("ObserverError", text.c_str(), SOURCE, __LINE__);
    }
}

} // namespace

int ObserverList::add(IObserver* observer) {
    if (observer == nullptr) {
        return 0;
    }
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const auto same = std::find_if(m_Entries.begin(), m_Entries.end(), [&](const auto& entry) {
        return entry.second->observer == observer;
    });
    if (same != m_Entries.end()) {
        return same->first;
    }
    m_Entries[++m_LastId] = std::make_shared<Entry>(Entry{observer});
    return m_LastId;
}

int ObserverList::remove(int id) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const auto found = m_Entries.find(id);
    if (found == m_Entries.end()) {
        return 0;
    }
    const EntryPointer entry = found->second;
    m_Entries.erase(found);
    while (notificationDepth == 0 && entry->calls > 0) {
        m_CallEnded.wait(m_Mutex, SOURCE, __LINE__);
    }
    return 1;
}

IObserver* ObserverList::find(int id) const {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const auto found = m_Entries.find(id);
    return found != m_Entries.end() ? found->second->observer : nullptr;
}

int ObserverList::notify(IMessage* message) {
    int lastId = 0;
    {
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        lastId = m_LastId;
    }
    int count = 0;
    int id = 0;
    while (const EntryPointer entry = nextAfter(id, lastId)) {
        deliver(*entry->observer, message);
        endCall(entry);
        ++count;
    }
    return count;
}

ObserverList::EntryPointer ObserverList::nextAfter(int& id, int lastId) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const auto next = m_Entries.upper_bound(id);
    if (next == m_Entries.end() || next->first > lastId) {
        return nullptr;
    }
    id = next->first;
    ++next->second->calls;
    return next->second;
}

void ObserverList::endCall(const EntryPointer& entry) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    --entry->calls;
    m_CallEnded.notifyAll();
}
