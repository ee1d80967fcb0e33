#pragma once

#include "platform/base/Export.h"

#include <atomic>
#include <cstddef>

/// The count record of one shared object. SafePointer takes the lock, compares the address,
/// changes the count and releases the lock: one step for all holders of the same object.
///
/// The memory of a record stays valid for the life of the process, so that even a stale pointer
/// to a record can be asked and answers "no" instead of crashing.
///
/// This class is compiled into whoever holds a SafePointer, because a count must cost next to
/// nothing. It is therefore the same for every framework, to the byte:
///
///     at                  bytes      what
///     0                   a pointer  the address that is counted; null once handed back
///     sizeof(void*)       4          the lock word, one of LockWord
///     sizeof(void*) + 4   4          the count, for whoever holds the lock
///
/// The lock word goes RETIRED -> FREE when the manager hands the record out, FREE -> LOCKED by
/// lock(), LOCKED -> FREE by unLock(), and LOCKED -> RETIRED by the unLock() that follows
/// takeBack(). What is not done within these bytes is left to the framework, in lockContended()
/// and recycle(); what more it keeps with a record stands in a class derived from this one.
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
    /// while it was locked may be handed out again from here on and not earlier.
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

protected:
    /// The states of the lock word.
    enum LockWord : unsigned {
        FREE,   ///< counts an object
        LOCKED, ///< one thread reads or changes the rest
        RETIRED ///< counts nothing: lock() refuses
    };

    /// A retired record.
    ref_count() {
        static_assert(offsetof(ref_count, m_Pointer) == 0, "the layout above");
        static_assert(offsetof(ref_count, m_Lock) == sizeof(void*), "the layout above");
        static_assert(offsetof(ref_count, m_Count) == sizeof(void*) + 4, "the layout above");
    }
    ~ref_count() = default;

    /// Has a retired record, which is the caller's alone, count one reference to `object`.
    void handOut(void* object) {
        m_Count = 1;
        m_Pointer.store(object, std::memory_order_relaxed);
        m_Lock.store(FREE, std::memory_order_release);
    }

    /// Has a record whose lock the caller holds count nothing any more.
    void takeBack() { m_Pointer.store(nullptr, std::memory_order_relaxed); }

private:
    /// For the framework to define: lock(), when the lock word was not FREE. Waits while it is
    /// LOCKED and does as lock() says.
    int lockContended();

    /// For the framework to define: unLock(), after takeBack(). Stores RETIRED, with which the
    /// lock ends, and may from then on hand the record out again; must not free it.
    void recycle();

    std::atomic<void*> m_Pointer{nullptr};
    std::atomic<unsigned> m_Lock{RETIRED};
    mutable int m_Count = 0;
};

static_assert(sizeof(ref_count) == sizeof(void*) + 8, "the layout above");
static_assert(std::atomic<void*>::is_always_lock_free && std::atomic<unsigned>::is_always_lock_free,
              "a record is bytes, with no lock beside them");

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
