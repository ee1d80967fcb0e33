#pragma once

#include "platform/Observer.h"

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>

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

    mutable std::mutex m_Mutex;
    std::condition_variable m_CallEnded;
    std::map<int, EntryPointer> m_Entries; // guarded by m_Mutex
    int m_LastId = 0;                      // guarded by m_Mutex
};
