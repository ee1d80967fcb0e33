#pragma once

#include "platform/base/Export.h"

#include <cstdint>

/// How an alarm output behaves when it is triggered. A plain value.
class NVRHW_API AlarmOutMode {
public:
    /// What a trigger does with the line.
    enum Mode : std::int32_t {
        Steady = 1, ///< active until cancelled, or for the timeout
        Flash = 2,  ///< inverted at the frequency until cancelled, or for the timeout
        Pulse = 3   ///< active for 10 ms
    };

    /// Which level counts as active.
    enum SwitchSignal : std::int32_t {
        Direct = 0,  ///< active is the line's configured valid level
        Inverted = 1 ///< active is the other level
    };

    AlarmOutMode() = default;

    /// `timeout` in milliseconds, 0 for no limit; `frequency` in level changes per second.
    AlarmOutMode(Mode mode, SwitchSignal validSignal, int timeout, float frequency)
        : m_Mode(mode), m_ValidSignal(validSignal), m_Frequency(frequency), m_Timeout(timeout) {}

    /// A value that Mode does not name makes a trigger do nothing.
    Mode getMode() const { return m_Mode; }
    void setMode(Mode mode) { m_Mode = mode; }

    /// Inverted swaps the active level and the one at rest.
    SwitchSignal getValidSignal() const { return m_ValidSignal; }
    void setValidSignal(SwitchSignal validSignal) { m_ValidSignal = validSignal; }

    /// Level changes per second while flashing: one on-and-off cycle takes two of them.
    float getFrequency() const { return m_Frequency; }
    void setFrequency(float frequency) { m_Frequency = frequency; }

    /// Milliseconds that a triggered output stays active; 0: until cancelled.
    int getTimeout() const { return m_Timeout; }
    void setTimeout(int timeout) { m_Timeout = timeout; }

private:
    Mode m_Mode = Steady;
    SwitchSignal m_ValidSignal = Direct;
    float m_Frequency = 0.0F;
    std::int32_t m_Timeout = 0;
};
