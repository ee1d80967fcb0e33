#pragma once

#include "platform/Cause.h"
#include "platform/base/Mutex.h"

#include <atomic>
#include <map>
#include <string>
#include <tuple>

/// Knows why lines fail at present, and logs it: one record when a line begins to fail or the cause
/// changes, one when it works again. What is repeated in between is counted: the next record tells
/// how often it has failed. Thread-safe.
class GPIOFaultBook {
public:
    enum Operation { READ, DRIVE, WATCH };

    /// Of all log records about lines.
    static constexpr char SUBJECT[] = "GPIOError";

    /// Notes how an operation on a line ended; an empty cause is success. A watch belongs to the
    /// whole group, whatever the bit.
    void note(Operation operation, int group, int bit, const Cause& cause);

    /// Logs what else is to be known of a line: "group G, bit B" and the text.
    static void tell(int group, int bit, const std::string& text);

    /// Why the last attempt failed; false, and `cause` untouched, when it did not.
    bool find(Operation operation, int group, int bit, Cause& cause);

private:
    using Key = std::tuple<Operation, int, int>;

    struct Fault {
        Cause cause;
        int count = 0; // of failures
    };

    static Key key(Operation operation, int group, int bit) {
        return {operation, group, operation == WATCH ? 0 : bit};
    }
    bool enter(const Key& key, const Cause& cause, int& failures);

    XQMutex m_Mutex;
    std::map<Key, Fault> m_Faults NVRHW_GUARDED_BY(m_Mutex);
    std::atomic<std::size_t> m_Count{0}; // of m_Faults
};
