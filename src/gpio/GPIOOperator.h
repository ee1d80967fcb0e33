#pragma once

#include "foundation/SafePointer.h"
#include "gpio/GPIOOperateRecord.h"
#include "gpio/IGPIOOperatorHook.h"
#include "platform/Gpio.h"
#include "platform/Thread.h"
#include "platform/base/Allocation.h"
#include "platform/base/Export.h"
#include "platform/base/Mutex.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

/// Reads and drives the GPIO lines: at once, held for a time, toggled, or pulsed. What takes time
/// is carried on by one worker thread, "GPIOOperationThread", which wakes every 50 ms; it runs from
/// the first timed operation until a cancellation leaves none.
///
/// Every operation but setGPIO() may be called from any thread. The driver is called by callers
/// and by the worker at the same time.
class NVRHW_API GPIOOperator {
public:
    NVRHW_TRACKED

    GPIOOperator();

    /// Ends the worker, as stop(); the records go without driving their lines.
    ~GPIOOperator();
    GPIOOperator(const GPIOOperator&) = delete;
    GPIOOperator& operator=(const GPIOOperator&) = delete;

    /// The driver, to be set before anything else. Every other use of an operator without a driver
    /// raises XQRuntimeError.
    void setGPIO(const SafePointer<IGPIO>& gpio);

    /// The key under which a line's record is kept: (group << 16) + bit in 32-bit arithmetic.
    static int getRecordKey(int group, int bit);

    /// The running operation of a line, or an empty pointer. The worker goes on changing it.
    SafePointer<GPIOOperateRecord> findRecord(int group, int bit);

    /// Drives a line at once; a running operation of the line goes on. Returns the driver's
    /// result (non-zero on success).
    int set(int group, int bit, int level);

    /// Reads a line into `level`. Returns the driver's result.
    int get(int group, int bit, int& level);

    /// Reads many lines. Returns the driver's result.
    int get(const std::vector<IOInfo>& lines, std::vector<IOState>& states);

    /// Drives a line to `level` at once, and then by the mode:
    ///   1: with a time-out, returns it to `stopLevel` when the time is over; without, ends any
    ///      running operation of the line;
    ///   2: inverts the line `frequency` times per second (0 or less: at every pass), and with a
    ///      time-out leaves it at `stopLevel` when the time is over;
    ///   3: waits 10 ms in the calling thread and drives the inverse level;
    ///   other: with a time-out, drives `stopLevel` when the time is over.
    /// An operation already running on the line is replaced (mode 3: goes on).
    ///
    /// `timeOut` is in milliseconds, 0 for no limit; values beyond 2147483 (about 35 minutes) are
    /// taken as 2147483. Changes happen at the first pass after they are due.
    /// Returns 1, or 0 when the worker cannot be started: the line then has `level`, and nothing
    /// more will happen to it.
    int set(int group, int bit, int operateMode, int level, int stopLevel, float frequency,
            int timeOut);

    /// Starts the worker if it does not run: 1 when it runs afterwards.
    int start() NVRHW_EXCLUDES(m_ControlMutex, m_RecordMutex);

    /// Ends the worker; returns when it has ended. Its sleep is cut short, and what is due by then
    /// is driven in a last pass.
    void stop() NVRHW_EXCLUDES(m_ControlMutex, m_RecordMutex);

    /// One pass of the worker: sleeps 50 ms, then drives what is due. Returns 0.
    int execOperation() NVRHW_EXCLUDES(m_RecordMutex);

    /// Who is told from now on what is done; null for nobody. It is first told that the operations
    /// that run have begun, with the time that is left of each. There is one at a time, which an
    /// nvrhw::Board is while it is open. A call of the one before may still be going on when this
    /// returns: it lives until then.
    void setHook(const std::shared_ptr<IGPIOOperatorHook>& hook) NVRHW_EXCLUDES(m_RecordMutex);

private:
    using RecordMap = std::map<std::int32_t, SafePointer<GPIOOperateRecord>>;

    using Hook = std::shared_ptr<IGPIOOperatorHook>;

    Hook hook() const;
    int driveNow(int group, int bit, int level);
    void pulse(const GPIOOperation& operation);
    void settle(const GPIOOperation& operation, bool isDriven, std::uint64_t before)
        NVRHW_REQUIRES(m_RecordMutex);
    void removeRecord(const GPIOOperation& operation, bool isDriven, std::uint64_t before)
        NVRHW_EXCLUDES(m_RecordMutex, m_ControlMutex);
    int keepRecord(const GPIOOperation& operation, bool isDriven, std::uint64_t before)
        NVRHW_EXCLUDES(m_RecordMutex, m_ControlMutex);
    void refuse(const GPIOOperation& operation) const;
    bool isIdle() NVRHW_EXCLUDES(m_RecordMutex);
    int startWorker() NVRHW_REQUIRES(m_ControlMutex);
    int startIfStopped() NVRHW_EXCLUDES(m_RecordMutex, m_ControlMutex);
    bool operate(GPIOOperateRecord& record) NVRHW_REQUIRES(m_RecordMutex);
    void drive(const GPIOOperateRecord& record, bool level) NVRHW_REQUIRES(m_RecordMutex);

    SafePointer<GThread> m_Thread;
    XQMutex m_ControlMutex; // serialises start() and stop(); never held together with the other
    XQMutex m_RecordMutex;
    RecordMap m_Records NVRHW_GUARDED_BY(m_RecordMutex);
    SafePointer<IGPIO> m_GPIO;

    // What the guards against races look at; changed under a lock, read without.
    std::atomic<std::uint64_t> m_Drives{0}; // the worker's, all lines together
    std::atomic<unsigned> m_Insertions{0};
    std::atomic<bool> m_Stopped{true}; // stop() came after the last successful start

    // For each line that the worker has driven, the number of its last drive of it.
    std::map<std::int32_t, std::uint64_t> m_LastDrives NVRHW_GUARDED_BY(m_RecordMutex);

    Hook m_Hook;                        // accessed atomically: drives take no lock
    std::atomic<bool> m_HasHook{false}; // so that without one a drive pays nothing
};
