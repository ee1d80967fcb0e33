#include "gpio/GPIOOperateRecord.h"

namespace {

constexpr double MICROSECONDS_PER_SECOND = 1000000.0;
constexpr double ALWAYS_DUE = -2147483648.0;

} // namespace

void GPIOOperateRecord::setFrequency(float frequency) {
    m_Frequency = frequency;
    m_EachTimeOut =
        frequency != 0.0F
            ? static_cast<double>(static_cast<float>(MICROSECONDS_PER_SECOND) / frequency)
            : ALWAYS_DUE;
}

bool GPIOOperateRecord::isTimeToOperation() const {
    const double elapsed = now() - m_LastOperateTime;
    switch (m_OperateMode) {
    case HOLD:
        return static_cast<double>(m_TimeOut) <= elapsed;
    case TOGGLE:
        return elapsed >= m_EachTimeOut;
    default:
        return false;
    }
}

bool GPIOOperateRecord::isTimeToStop() const {
    return m_TimeOut != 0 && static_cast<double>(m_TimeOut) < now() - m_StartOperateTime;
}

double GPIOOperateRecord::now() {
    const TarvikTime time = TarvikTime::currentTime();
    return (time.getSeconds() + time.getMicroseconds() / MICROSECONDS_PER_SECOND) *
           MICROSECONDS_PER_SECOND;
}
