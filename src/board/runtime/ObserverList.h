#pragma once

#include "board/runtime/ConditionVariable.h"
#include "platform/Observer.h"
#include "platform/base/Mutex.h"

#include <map>
#include <memory>

/// The observers of one subject, by id.
class ObserverList {
public:
    int add(IObserver* observer);
    int remove(int id);
    IObserver* find(int id) const;
    int notify(IMessage* message);

private:
    struct Entry {
        IObserver* observer;
        int calls = 0; ///< calls in progress, in all threads
    };
    using EntryPointer = std::shared_ptr<Entry>;

    EntryPointer nextAfter(int& id, int lastId);
    void endCall(const EntryPointer& entry);

    mutable XQMutex m_Mutex;
    ConditionVariable m_CallEnded;
    std::map<int, EntryPointer> m_Entries NVRHW_GUARDED_BY(m_Mutex);
    int m_LastId NVRHW_GUARDED_BY(m_Mutex) = 0;
};
