#include "board/runtime/RefCountPool.h"

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

void RefCountPool::List::push(ref_count* record) {
    record->m_Next = head;
    head = record;
    ++size;
}

ref_count* RefCountPool::List::pop() {
    ref_count* record = head;
    head = record->m_Next;
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
    static thread_local Cache cache;
    if (!cache.flushAtExit) {
        static thread_local CacheFlusher flusher;
        flusher.cache = &cache;
        cache.flushAtExit = true;
    }
    return cache;
}

ref_count* RefCountPool::take() {
    Cache& mine = cache();
    if (mine.free.head == nullptr) {
        refill(mine.free);
    }
    ref_count* record = mine.free.pop();
    if (mine.closed) {
        spill(mine.free, mine.free.size);
    }
    return record;
}

void RefCountPool::giveBack(ref_count* record) {
    Cache& mine = cache();
    mine.free.push(record);
    if (mine.closed) {
        spill(mine.free, mine.free.size);
    } else if (mine.free.size > CACHE_LIMIT) {
        spill(mine.free, BATCH);
    }
}

void RefCountPool::refill(List& list) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    if (m_Shared.head == nullptr) {
        auto* chunk = new ref_count[BATCH];
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
