// A line has a record in the map or it has none. A timed set() puts one there or gives it new
// settings; a set() that holds for good takes it out, and so does the pass of the worker that ends
// it. The worker is off until the first record; it is put on before a record comes, and off when a
// caller's removal leaves none. The record lock guards the records and is held for a whole pass of
// the worker, its drives included. The control lock makes one of running() and start(), and orders
// them with stop(); nobody holds both locks. Callers drive with no lock of the operator: a pass
// that hangs in the driver delays what they do with a record afterwards, never the drive itself.
// Three things must never be seen:
//
// A line left at a level of the worker's that a caller has replaced. A caller notes the count of
// the worker's drives, drives, and gets the record lock to change the record; the worker counts a
// drive when it has ended. A drive that the note includes was over before the caller's own. One
// that it does not include either ended before the caller got the lock: then the line's last drive
// has a higher number than the note, and the caller drives again before it lets go of the lock. Or
// it begins after the caller has let go: then it follows the caller's record.
//
// A record that no worker serves. The worker is on before a record is inserted, but somebody who
// found the map empty earlier may stop it in between. The inserter counts its insertion and then
// looks whether the worker was stopped; who stops marks the stop and then looks whether something
// was inserted since it found the map empty. These are sequentially consistent atomics, so at least
// one of the two sees the other, and starts the worker again under the control lock, unless
// somebody has done so by then.
//
// A guard at work where nobody interfered: the level is driven once, start() and stop() of the
// thread are called once. A thread class whose running() lags behind its start() would refuse a
// second start(), and the caller would drop a record that is served.
#include "gpio/GPIOOperator.h"

#include "platform/Diagnostics.h"
#include "platform/Time.h"

#include <algorithm>
#include <cstdio>
#include <limits>

namespace {

constexpr char SOURCE[] = "GPIOOperator";
constexpr char THREAD_NAME[] = "GPIOOperationThread";
constexpr long PASS_MICROSECONDS = 50000;
constexpr long PULSE_MICROSECONDS = 10000;
constexpr int PULSE = 3; // beside the two modes of a record

int inverse(int level) { return level == 0 ? 1 : 0; }

int toMicroseconds(int milliseconds) {
    using Limits = std::numeric_limits<std::int32_t>;
    const std::int64_t exact = std::int64_t{1000} * milliseconds;
    return static_cast<int>(std::clamp<std::int64_t>(exact, Limits::min(), Limits::max()));
}

GPIOOperateRecord toRecord(const GPIOOperation& operation) {
    GPIOOperateRecord record;
    record.setGroup(operation.group);
    record.setBitPosition(operation.bit);
    record.setOperateMode(operation.mode);
    record.setFrequency(operation.frequency);
    record.setTimeOut(toMicroseconds(operation.timeOut));
    record.setCurrentLevel(inverse(operation.level) != 0);
    record.setStopLevel(operation.stopLevel != 0);
    return record;
}

// As it would have to be asked for now.
GPIOOperation toOperation(const GPIOOperateRecord& record) {
    const double past = GPIOOperateRecord::now() - record.getStartOperateTime();
    const double left = std::max(1000.0, record.getTimeOut() - past);
    return {record.getGroup(),
            record.getBitPosition(),
            record.getOperateMode(),
            record.getCurrentLevel() ? 0 : 1,
            record.getStopLevel() ? 1 : 0,
            record.getFrequency(),
            record.getTimeOut() != 0 ? static_cast<int>(left / 1000) : 0};
}

void tellBegun(const std::shared_ptr<IGPIOOperatorHook>& hook, const GPIOOperation& operation,
               bool isDriven) {
    if (hook != nullptr) {
        hook->begun(operation);
        hook->driven(operation.group, operation.bit, operation.level, isDriven);
    }
}

} // namespace

GPIOOperator::GPIOOperator() {
    m_RecordMutex.Init();
    m_ControlMutex.Init();
    const function<int> pass(&GPIOOperator::execOperation, this);
    m_Thread = SafePointer<GThread>(new (SOURCE, __LINE__) GThread(
        pass, THREAD_NAME, function<int>(GThread::emptyFun), function<int>(GThread::emptyFun)));
}

GPIOOperator::~GPIOOperator() { stop(); }

void GPIOOperator::setGPIO(const SafePointer<IGPIO>& gpio) { m_GPIO = gpio; }

int GPIOOperator::getRecordKey(int group, int bit) {
    const auto key = (static_cast<std::uint32_t>(group) << 16U) + static_cast<std::uint32_t>(bit);
    return static_cast<std::int32_t>(key);
}

SafePointer<GPIOOperateRecord> GPIOOperator::findRecord(int group, int bit) {
    const XQMutexManager guard(m_RecordMutex, SOURCE, __LINE__);
    const auto found = m_Records.find(getRecordKey(group, bit));
    if (found == m_Records.end()) {
        return SafePointer<GPIOOperateRecord>();
    }
    return found->second;
}

int GPIOOperator::set(int group, int bit, int level) { return driveNow(group, bit, level); }

int GPIOOperator::driveNow(int group, int bit, int level) {
    const int result = m_GPIO->set(group, bit, level);
    if (const Hook told = hook()) {
        told->driven(group, bit, level, result != 0);
    }
    return result;
}

int GPIOOperator::get(int group, int bit, int& level) { return m_GPIO->get(group, bit, level); }

int GPIOOperator::get(const std::vector<IOInfo>& lines, std::vector<IOState>& states) {
    return m_GPIO->get(lines, states);
}

int GPIOOperator::set(int group, int bit, int operateMode, int level, int stopLevel,
                      float frequency, int timeOut) {
    const GPIOOperation operation{group, bit, operateMode, level, stopLevel, frequency, timeOut};
    if (operateMode == PULSE) {
        pulse(operation);
        return 1;
    }
    const std::uint64_t before = m_Drives;
    const bool isDriven = m_GPIO->set(group, bit, level) != 0;
    if (operateMode == GPIOOperateRecord::HOLD && timeOut == 0) {
        removeRecord(operation, isDriven, before);
        return 1;
    }
    if (start() == 0) {
        tellBegun(hook(), operation, isDriven);
    } else if (keepRecord(operation, isDriven, before) != 0) {
        return 1;
    }
    refuse(operation);
    return 0;
}

void GPIOOperator::refuse(const GPIOOperation& operation) const {
    if (const Hook told = hook()) {
        told->refused(operation);
    }
    if (GlobalEnv::getInstance()->getPrintFlag() != 0) {
        std::printf("start gpio thread fail\n");
    }
}

void GPIOOperator::pulse(const GPIOOperation& operation) {
    const int group = operation.group;
    const int bit = operation.bit;
    if (const Hook told = hook()) {
        told->begun(operation);
    }
    driveNow(group, bit, operation.level);
    TarvikTime::wait(TarvikTime(0, PULSE_MICROSECONDS));
    driveNow(group, bit, inverse(operation.level));
    if (const Hook told = hook()) {
        told->ended(group, bit, PULSE);
    }
}

// The operation takes over its line, which a caller has driven without the lock.
void GPIOOperator::settle(const GPIOOperation& operation, bool isDriven, std::uint64_t before) {
    tellBegun(hook(), operation, isDriven);
    const auto last = m_LastDrives.find(getRecordKey(operation.group, operation.bit));
    if (last != m_LastDrives.end() && last->second > before) {
        driveNow(operation.group, operation.bit, operation.level);
    }
}

void GPIOOperator::removeRecord(const GPIOOperation& operation, bool isDriven,
                                std::uint64_t before) {
    bool idle = false;
    unsigned insertions = 0;
    {
        const XQMutexManager guard(m_RecordMutex, SOURCE, __LINE__);
        m_Records.erase(getRecordKey(operation.group, operation.bit));
        settle(operation, isDriven, before);
        idle = m_Records.empty();
        insertions = m_Insertions;
    }
    if (!idle) {
        return;
    }
    stop();
    if (insertions != m_Insertions && !isIdle()) {
        startIfStopped();
    }
}

int GPIOOperator::keepRecord(const GPIOOperation& operation, bool isDriven, std::uint64_t before) {
    const int key = getRecordKey(operation.group, operation.bit);
    {
        const XQMutexManager guard(m_RecordMutex, SOURCE, __LINE__);
        auto found = m_Records.find(key);
        if (found == m_Records.end()) {
            const SafePointer<GPIOOperateRecord> record(new (SOURCE, __LINE__) GPIOOperateRecord);
            found = m_Records.insert({key, record}).first;
            ++m_Insertions;
        }
        GPIOOperateRecord& record = *found->second.operator->();
        record = toRecord(operation);
        settle(operation, isDriven, before);
        record.setLastOperateTime(GPIOOperateRecord::now());
        record.setStartOperateTime(record.getLastOperateTime());
    }
    if (startIfStopped() != 0) {
        return 1;
    }
    const XQMutexManager guard(m_RecordMutex, SOURCE, __LINE__);
    m_Records.erase(key);
    return 0;
}

GPIOOperator::Hook GPIOOperator::hook() const {
    return m_HasHook ? std::atomic_load(&m_Hook) : nullptr;
}

void GPIOOperator::setHook(const std::shared_ptr<IGPIOOperatorHook>& hook) {
    const XQMutexManager guard(m_RecordMutex, SOURCE, __LINE__);
    std::atomic_store(&m_Hook, hook);
    m_HasHook = hook != nullptr;
    for (const auto& known : m_Records) {
        if (hook != nullptr) {
            hook->begun(toOperation(*known.second.operator->()));
        }
    }
}

bool GPIOOperator::isIdle() {
    const XQMutexManager guard(m_RecordMutex, SOURCE, __LINE__);
    return m_Records.empty();
}

int GPIOOperator::start() {
    const XQMutexManager guard(m_ControlMutex, SOURCE, __LINE__);
    return startWorker();
}

int GPIOOperator::startWorker() {
    if (m_Thread->running() == 0 && m_Thread->start() == 0) {
        return 0;
    }
    m_Stopped = false;
    return 1;
}

int GPIOOperator::startIfStopped() {
    if (!m_Stopped) {
        return 1;
    }
    const XQMutexManager guard(m_ControlMutex, SOURCE, __LINE__);
    return m_Stopped ? startWorker() : 1;
}

void GPIOOperator::stop() {
    const XQMutexManager guard(m_ControlMutex, SOURCE, __LINE__);
    m_Stopped = true;
    m_Thread->stop();
}

int GPIOOperator::execOperation() {
    TarvikTime::wait(TarvikTime(0, PASS_MICROSECONDS));
    const XQMutexManager guard(m_RecordMutex, SOURCE, __LINE__);
    for (auto entry = m_Records.begin(); entry != m_Records.end(); ++entry) {
        if (operate(*entry->second.operator->())) {
            m_Records.erase(entry);
            break; // the lines behind it are looked at in the next pass
        }
    }
    return 0;
}

bool GPIOOperator::operate(GPIOOperateRecord& record) {
    if (record.isTimeToStop()) {
        drive(record, record.getStopLevel());
        if (const Hook told = hook()) {
            told->ended(record.getGroup(), record.getBitPosition(), record.getOperateMode());
        }
        return true;
    }
    if (record.isTimeToOperation()) {
        const bool level = record.getCurrentLevel();
        drive(record, level);
        record.setCurrentLevel(!level);
        record.setLastOperateTime(GPIOOperateRecord::now());
    }
    return false;
}

void GPIOOperator::drive(const GPIOOperateRecord& record, bool level) {
    const int group = record.getGroup();
    const int bit = record.getBitPosition();
    driveNow(group, bit, level ? 1 : 0);
    m_LastDrives[getRecordKey(group, bit)] = ++m_Drives; // after the drive, never before
}
