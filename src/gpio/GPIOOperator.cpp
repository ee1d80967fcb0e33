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

int GPIOOperator::set(int group, int bit, int level) { return m_GPIO->set(group, bit, level); }

int GPIOOperator::get(int group, int bit, int& level) { return m_GPIO->get(group, bit, level); }

int GPIOOperator::get(const std::vector<IOInfo>& lines, std::vector<IOState>& states) {
    return m_GPIO->get(lines, states);
}

int GPIOOperator::set(int group, int bit, int operateMode, int level, int stopLevel,
                      float frequency, int timeOut) {
    if (operateMode == PULSE) {
        pulse(group, bit, level);
        return 1;
    }
    const std::uint64_t before = m_Drives;
    m_GPIO->set(group, bit, level);
    if (operateMode == GPIOOperateRecord::HOLD && timeOut == 0) {
        removeRecord(group, bit, level, before);
        return 1;
    }
    GPIOOperateRecord settings;
    settings.setGroup(group);
    settings.setBitPosition(bit);
    settings.setOperateMode(operateMode);
    settings.setFrequency(frequency);
    settings.setTimeOut(toMicroseconds(timeOut));
    settings.setCurrentLevel(inverse(level) != 0);
    settings.setStopLevel(stopLevel != 0);

    if (start() != 0 && keepRecord(settings, level, before) != 0) {
        return 1;
    }
    if (GlobalEnv::getInstance()->getPrintFlag() != 0) {
        std::printf("start gpio thread fail\n");
    }
    return 0;
}

void GPIOOperator::pulse(int group, int bit, int level) {
    m_GPIO->set(group, bit, level);
    TarvikTime::wait(TarvikTime(0, PULSE_MICROSECONDS));
    m_GPIO->set(group, bit, inverse(level));
}

void GPIOOperator::settleLevel(int group, int bit, int level, std::uint64_t before) {
    const auto last = m_LastDrives.find(getRecordKey(group, bit));
    if (last != m_LastDrives.end() && last->second > before) {
        m_GPIO->set(group, bit, level);
    }
}

void GPIOOperator::removeRecord(int group, int bit, int level, std::uint64_t before) {
    bool idle = false;
    unsigned insertions = 0;
    {
        const XQMutexManager guard(m_RecordMutex, SOURCE, __LINE__);
        m_Records.erase(getRecordKey(group, bit));
        settleLevel(group, bit, level, before);
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

int GPIOOperator::keepRecord(const GPIOOperateRecord& settings, int level, std::uint64_t before) {
    const int key = getRecordKey(settings.getGroup(), settings.getBitPosition());
    {
        const XQMutexManager guard(m_RecordMutex, SOURCE, __LINE__);
        auto found = m_Records.find(key);
        if (found == m_Records.end()) {
            const SafePointer<GPIOOperateRecord> record(new (SOURCE, __LINE__) GPIOOperateRecord);
            found = m_Records.insert({key, record}).first;
            ++m_Insertions;
        }
        GPIOOperateRecord& record = *found->second.operator->();
        record = settings;
        settleLevel(settings.getGroup(), settings.getBitPosition(), level, before);
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
    m_GPIO->set(group, bit, level ? 1 : 0);
    m_LastDrives[getRecordKey(group, bit)] = ++m_Drives; // after the drive, never before
}
