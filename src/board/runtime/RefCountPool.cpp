#include "board/runtime/RefCountPool.h"

// A record is handed out, or free in exactly one list. A free one stands in the cache of a thread,
// which only that thread touches, or in the shared list behind the lock; it moves from one to the
// other in batches, by the thread whose cache it is. A thread's cache is open until the thread
// ends, which spills it, and closed from then on: what its last destructors still take and give
// back passes through to the shared list. What must never be seen is a record that is freed, since
// stale pointers may still ask it, or one kept in the cache of a thread that has ended.

namespace {

constexpr char SOURCE[] = "RefCountPool";
constexpr unsigned BATCH = 32;
constexpr unsigned CACHE_LIMIT = 2 * BATCH;

} // namespace

struct RefCountPool::Cache {
    List free;
    bool flushAtExit = false;
    bool closed = false; // the thread is ending: nothing may be kept for it any more
};

struct RefCountPool::CacheFlusher {
    Cache* cache = nullptr;

    ~CacheFlusher() {
        cache->closed = true;
        getInstance().spill(cache->free, cache->free.size);
    }
};

void RefCountPool::List::push(RefCountRecord* record) {
    record->next = head;
    head = record;
    ++size;
}

RefCountRecord* RefCountPool::List::pop() {
    RefCountRecord* record = head;
    head = record->next;
    --size;
    return record;
}

void RefCountPool::List::moveTo(List& other, unsigned count) {
    for (; count > 0 && head != nullptr; --count) {
        other.push(pop());
    }
}

RefCountPool& RefCountPool::getInstance() {
    static RefCountPool* const pool = new RefCountPool; // outlives every static pointer
    return *pool;
}

RefCountPool::Cache& RefCountPool::cache() {
    // The cache itself needs no destructor and so stays usable while the thread's other
    // thread-local objects are destroyed; the flusher empties it when the thread ends.
    // Found without a call, which initial-exec is for: every pointer made or dropped comes here.
    [[gnu::tls_model("initial-exec")]] static thread_local Cache cache;
    if (!cache.flushAtExit) {
        static thread_local CacheFlusher flusher;
        flusher.cache = &cache;
        cache.flushAtExit = true;
    }
    return cache;
}

RefCountRecord* RefCountPool::take() {
    Cache& mine = cache();
    if (mine.free.head == nullptr) {
        getInstance().refill(mine.free);
    }
    RefCountRecord* record = mine.free.pop();
    if (mine.closed) {
        getInstance().spill(mine.free, mine.free.size);
    }
    return record;
}

void RefCountPool::giveBack(RefCountRecord* record) {
    Cache& mine = cache();
    mine.free.push(record);
    if (mine.closed) {
        getInstance().spill(mine.free, mine.free.size);
    } else if (mine.free.size > CACHE_LIMIT) {
        getInstance().spill(mine.free, BATCH);
    }
}

void RefCountPool::refill(List& list) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    if (m_Shared.head == nullptr) {
        auto* chunk = new RefCountRecord[BATCH];
        for (unsigned i = BATCH; i > 0; --i) {
            m_Shared.push(&chunk[i - 1]);
        }
    }
    m_Shared.moveTo(list, BATCH);
}

void RefCountPool::spill(List& list, unsigned count) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    list.moveTo(m_Shared, count);
}
