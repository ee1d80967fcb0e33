#pragma once

#include "platform/base/Mutex.h"
#include "platform/base/RefCount.h"

/// A count record that can stand in a list of free ones.
class RefCountRecord : public ref_count {
public:
    using ref_count::handOut;
    using ref_count::takeBack;

    RefCountRecord* next = nullptr; ///< touched by whoever owns the list
};

/// The store of count records. Each thread keeps a few free records of its own, so that making and
/// releasing an object normally takes no lock; the rest is shared. Records are never given back to
/// the system.
class RefCountPool {
public:
    static RefCountRecord* take();
    static void giveBack(RefCountRecord* record);

private:
    struct List {
        RefCountRecord* head = nullptr;
        unsigned size = 0;

        void push(RefCountRecord* record);
        RefCountRecord* pop();
        void moveTo(List& other, unsigned count);
    };
    struct Cache;
    struct CacheFlusher;

    RefCountPool() = default;

    static RefCountPool& getInstance();
    static Cache& cache();
    void refill(List& list);
    void spill(List& list, unsigned count);

    XQMutex m_Mutex;
    List m_Shared NVRHW_GUARDED_BY(m_Mutex);
};
