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
    const Watermark before = watermark(group, bit);
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

GPIOOperator::Watermark GPIOOperator::watermark(int group, int bit) {
    const XQMutexManager guard(m_RecordMutex, SOURCE, __LINE__);
    return {m_Records.count(getRecordKey(group, bit)) != 0, m_WorkerDrives};
}

void GPIOOperator::settleLevel(int group, int bit, int level, const Watermark& before) {
    if (before.recorded && before.drives != m_WorkerDrives) {
        m_GPIO->set(group, bit, level);
    }
}

void GPIOOperator::removeRecord(int group, int bit, int level, const Watermark& before) {
    bool idle = false;
    {
        const XQMutexManager guard(m_RecordMutex, SOURCE, __LINE__);
        m_Records.erase(getRecordKey(group, bit));
        settleLevel(group, bit, level, before);
        idle = m_Records.empty();
    }
    if (!idle) {
        return;
    }
    stop();
    // Another caller may have found the worker running and added its record before it ended.
    if (!isIdle()) {
        start();
    }
}

int GPIOOperator::keepRecord(const GPIOOperateRecord& settings, int level,
                             const Watermark& before) {
    const int key = getRecordKey(settings.getGroup(), settings.getBitPosition());
    {
        const XQMutexManager guard(m_RecordMutex, SOURCE, __LINE__);
        auto found = m_Records.find(key);
        if (found == m_Records.end()) {
            const SafePointer<GPIOOperateRecord> record(new (SOURCE, __LINE__) GPIOOperateRecord);
            found = m_Records.insert({key, record}).first;
        }
        GPIOOperateRecord& record = *found->second.operator->();
        record = settings;
        settleLevel(settings.getGroup(), settings.getBitPosition(), level, before);
        record.setLastOperateTime(GPIOOperateRecord::now());
        record.setStartOperateTime(record.getLastOperateTime());
    }
    // Another caller may have stopped the worker between its start and the insertion.
    if (start() != 0) {
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
    return m_Thread->running() != 0 || m_Thread->start() != 0 ? 1 : 0;
}

void GPIOOperator::stop() {
    const XQMutexManager guard(m_ControlMutex, SOURCE, __LINE__);
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
    const int group = record.getGroup();
    const int bit = record.getBitPosition();
    if (record.isTimeToStop()) {
        m_GPIO->set(group, bit, record.getStopLevel() ? 1 : 0);
        ++m_WorkerDrives;
        return true;
    }
    if (record.isTimeToOperation()) {
        const bool level = record.getCurrentLevel();
        m_GPIO->set(group, bit, level ? 1 : 0);
        ++m_WorkerDrives;
        record.setCurrentLevel(!level);
        record.setLastOperateTime(GPIOOperateRecord::now());
    }
    return false;
}
