#pragma once

#include "platform/base/Mutex.h"
#include "platform/base/RefCount.h"

/// The store of count records. Each thread keeps a few free records of its own, so that making and
/// releasing an object normally takes no lock; the rest is shared. Records are never given back to
/// the system.
class RefCountPool {
public:
    static RefCountPool& getInstance();

    ref_count* take();
    void giveBack(ref_count* record);

private:
    struct List {
        ref_count* head = nullptr;
        unsigned size = 0;

        void push(ref_count* record);
        ref_count* pop();
        void moveTo(List& other, unsigned count);
    };
    struct Cache;
    struct CacheFlusher;

    RefCountPool() = default;

    static Cache& cache();
    void refill(List& list);
    void spill(List& list, unsigned count);

    XQMutex m_Mutex;
    List m_Shared NVRHW_GUARDED_BY(m_Mutex);
};
