#include "platform/Observer.h"

#include "board/runtime/ExceptionText.h"
#include "platform/Diagnostics.h"
#include "platform/base/ConditionVariable.h"
#include "platform/base/Mutex.h"

#include <algorithm>
#include <map>
#include <string>

// An observer is known from addObserver() to removeObserver(), by whichever threads, with the
// subject's lock held. A notification walks the ids in ascending order: it takes the lock only to
// find the next one and to count itself into that entry's calls, and again to count itself out.
// The observer is called without the lock and may thus add, remove and notify. The entry is shared
// with the call in progress, so that it may be removed meanwhile; removeObserver() then waits for
// the calls to go down to none, unless its own thread is in a notification, which would be waiting
// for itself. What must never be seen is an observer that is called after its removal has returned,
// or a lock held while one is called.

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

struct ISubject::Impl {
    struct Entry {
        IObserver* observer;
        int calls = 0; // in progress, in all threads
    };
    using EntryPointer = std::shared_ptr<Entry>;

    EntryPointer beginCallAfter(int& id, int lastId);
    void endCall(const EntryPointer& entry);

    XQMutex mutex;
    ConditionVariable callEnded;
    std::map<int, EntryPointer> entries NVRHW_GUARDED_BY(mutex);
    int lastId NVRHW_GUARDED_BY(mutex) = 0;
};

ISubject::Impl::EntryPointer ISubject::Impl::beginCallAfter(int& id, int last) {
    const XQMutexManager guard(mutex, SOURCE, __LINE__);
    const auto next = entries.upper_bound(id);
    if (next == entries.end() || next->first > last) {
        return nullptr;
    }
    id = next->first;
    ++next->second->calls;
    return next->second;
}

void ISubject::Impl::endCall(const EntryPointer& entry) {
    const XQMutexManager guard(mutex, SOURCE, __LINE__);
    --entry->calls;
    callEnded.notifyAll();
}

ISubject::ISubject() : m_Impl(new Impl) {}

ISubject::~ISubject() = default;

int ISubject::addObserver(IObserver* observer) {
    if (observer == nullptr) {
        return 0;
    }
    Impl& mine = *m_Impl;
    const XQMutexManager guard(mine.mutex, SOURCE, __LINE__);
    const auto same =
        std::find_if(mine.entries.begin(), mine.entries.end(),
                     [&](const auto& entry) { return entry.second->observer == observer; });
    if (same != mine.entries.end()) {
        return same->first;
    }
    mine.entries[++mine.lastId] = std::make_shared<Impl::Entry>(Impl::Entry{observer});
    return mine.lastId;
}

int ISubject::removeObserver(int id) {
    Impl& mine = *m_Impl;
    const XQMutexManager guard(mine.mutex, SOURCE, __LINE__);
    const auto found = mine.entries.find(id);
    if (found == mine.entries.end()) {
        return 0;
    }
    const Impl::EntryPointer entry = found->second;
    mine.entries.erase(found);
    while (notificationDepth == 0 && entry->calls > 0) {
        mine.callEnded.wait(mine.mutex, SOURCE, __LINE__);
    }
    return 1;
}

IObserver* ISubject::findObserver(int id) const {
    Impl& mine = *m_Impl;
    const XQMutexManager guard(mine.mutex, SOURCE, __LINE__);
    const auto found = mine.entries.find(id);
    return found != mine.entries.end() ? found->second->observer : nullptr;
}

int ISubject::notifyObserver(IMessage* message) {
    Impl& mine = *m_Impl;
    int last = 0;
    {
        const XQMutexManager guard(mine.mutex, SOURCE, __LINE__);
        last = mine.lastId;
    }
    int count = 0;
    int id = 0;
    while (const auto entry = mine.beginCallAfter(id, last)) {
        deliver(*entry->observer, message);
        mine.endCall(entry);
        ++count;
    }
    return count;
}
