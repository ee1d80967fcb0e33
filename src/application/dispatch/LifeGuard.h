#pragma once

#include "platform/base/ConditionVariable.h"
#include "platform/base/Mutex.h"

namespace nvrhw {

/// Whether a board is open, and how many operations on it are going on, so that it closes under
/// none. Thread-safe.
class LifeGuard {
public:
    /// An operation on the board, for as long as it lives; false when the board is closed.
    class Operation {
    public:
        explicit Operation(LifeGuard& life) : m_Life(life), m_IsAllowed(life.enter()) {}
        ~Operation() {
            if (m_IsAllowed) {
                m_Life.leave();
            }
        }
        Operation(const Operation&) = delete;
        Operation& operator=(const Operation&) = delete;
        explicit operator bool() const { return m_IsAllowed; }

    private:
        LifeGuard& m_Life;
        const bool m_IsAllowed;
    };

    /// Lets no operation begin and waits for those that go on. Not to be called inside one.
    void close() {
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        m_IsClosed = true;
        while (m_Operations > 0) {
            m_Left.wait(m_Mutex, SOURCE, __LINE__);
        }
    }

private:
    bool enter() {
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        m_Operations += m_IsClosed ? 0 : 1;
        return !m_IsClosed;
    }
    void leave() {
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        --m_Operations;
        m_Left.notifyAll();
    }

    static constexpr char SOURCE[] = "LifeGuard";

    XQMutex m_Mutex;
    ConditionVariable m_Left;
    int m_Operations NVRHW_GUARDED_BY(m_Mutex) = 0;
    bool m_IsClosed NVRHW_GUARDED_BY(m_Mutex) = false;
};

} // namespace nvrhw
