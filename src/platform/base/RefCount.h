#pragma once

#include "platform/base/Export.h"

#include <atomic>

/// The count record of one shared object. SafePointer takes the lock, compares the address,
/// changes the count and releases the lock: one step for all holders of the same object.
///
/// The memory of a record stays valid for the life of the process, so that even a stale pointer
/// to a record can be asked and answers "no" instead of crashing.
class NVRHW_API ref_count {
public:
    ref_count(const ref_count&) = delete;
    ref_count& operator=(const ref_count&) = delete;

    /// Takes the lock. 0 on success; non-zero when the record was handed back (its object is
    /// gone), and then the lock is not held.
    int lock() {
        unsigned expected = FREE;
        if (m_Lock.compare_exchange_strong(expected, LOCKED, std::memory_order_acquire,
                                           std::memory_order_relaxed)) {
            return 0;
        }
        return lockContended();
    }

    /// Releases the lock; does nothing when lock() had refused. A record that was handed back
    /// while it was locked returns to the pool here and not earlier.
    void unLock() {
        if (m_Lock.load(std::memory_order_relaxed) != LOCKED) {
            return;
        }
        if (getPointer() != nullptr) {
            m_Lock.store(FREE, std::memory_order_release);
        } else {
            recycle();
        }
    }

    /// The address the record counts; null once it was handed back.
    void* getPointer() const { return m_Pointer.load(std::memory_order_relaxed); }

    /// Raises the count and returns it, or returns 0 when the count has already reached zero.
    /// To be called with the lock held, as dec_reference() and getCount().
    int inc_reference() const { return m_Count > 0 ? ++m_Count : 0; }

    /// Lowers the count and returns the new count.
    int dec_reference() { return --m_Count; }

    /// How many holders there are.
    int getCount() const { return m_Count; }

private:
    friend class RefCountManager;
    friend class RefCountPool;

    enum : unsigned { FREE, LOCKED, RETIRED };

    ref_count() = default;

    int lockContended();
    void recycle();

    std::atomic<void*> m_Pointer{nullptr};
    ref_count* m_Next = nullptr;
    std::atomic<unsigned> m_Lock{RETIRED};
    mutable int m_Count = 0;
};

/// Hands out the count records. One per process, never destroyed: pointers held by static objects
/// may be released at any time during exit. All operations may be called from any thread.
class NVRHW_API RefCountManager {
public:
    /// The one manager of the process.
    static RefCountManager* getInstance();

    RefCountManager(const RefCountManager&) = delete;
    RefCountManager& operator=(const RefCountManager&) = delete;

    /// A record for `object` whose count of 1 is the caller's reference. Two calls with the same
    /// address give two independent records: wrap a raw pointer once.
    /// Throws std::bad_alloc when no memory is left for a record.
    ref_count* retrieveRefCount(void* object, const char* typeName);

    /// Takes back a record whose count has reached zero, while the caller still holds its lock;
    /// the unLock() that follows makes it available for another object.
    void returnbackRefCount(ref_count* record, const char* typeName);

private:
    RefCountManager() = default;
    ~RefCountManager() = default;
};
