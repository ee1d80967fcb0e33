#include "platform/base/RefCount.h"

#include "board/runtime/RefCountPool.h"

#include <cerrno>
#include <ctime>
#include <sched.h>

namespace {

constexpr int SPINS = 64;
constexpr int YIELDS = 16;
constexpr long NAP_NANOSECONDS = 50000;

// Whoever holds the lock may be a thread of lower priority on the only core, so waiting must at
// some point really sleep.
void backOff(int round) {
    if (round < SPINS) {
        return;
    }
    if (round < SPINS + YIELDS) {
        sched_yield();
        return;
    }
    const timespec nap{0, NAP_NANOSECONDS};
    nanosleep(&nap, nullptr);
}

} // namespace

int ref_count::lockContended() {
    for (int round = 0;; round = round < SPINS + YIELDS ? round + 1 : round) {
        unsigned seen = m_Lock.load(std::memory_order_relaxed);
        if (seen == RETIRED) {
            return EOWNERDEAD;
        }
        if (seen == FREE && m_Lock.compare_exchange_weak(seen, LOCKED, std::memory_order_acquire,
                                                         std::memory_order_relaxed)) {
            return 0;
        }
        backOff(round);
    }
}

void ref_count::recycle() {
    m_Lock.store(RETIRED, std::memory_order_release);
    RefCountPool::giveBack(static_cast<RefCountRecord*>(this));
}

RefCountManager* RefCountManager::getInstance() {
    static RefCountManager manager; // without a state or an end
    return &manager;
}

ref_count* RefCountManager::retrieveRefCount(void* object, const char* /*typeName*/) {
    RefCountRecord* record = RefCountPool::take();
    record->handOut(object);
    return record;
}

void RefCountManager::returnbackRefCount(ref_count* record, const char* /*typeName*/) {
    static_cast<RefCountRecord*>(record)->takeBack();
}
