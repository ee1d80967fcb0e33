#pragma once

#include "foundation/SafePointer.h"
#include "platform/Gpio.h"
#include "platform/base/Allocation.h"

#include <functional>
#include <map>
#include <mutex>
#include <utility>

/// A driver in front of the real one: it sees every level that the library drives, and whether
/// that could be done.
class DriveTrace : public IGPIO {
public:
    NVRHW_TRACKED

    /// Called in the driving thread, with the new level, when a line's level is not the one driven
    /// before.
    using Listener = std::function<void(int level)>;

    DriveTrace(const SafePointer<IGPIO>& driver, Listener listener);

    int init() override { return m_Driver->init(); }
    int uninit() override { return m_Driver->uninit(); }
    int set(int group, int bit, int level) override;
    int get(int group, int bit, int& level) override { return m_Driver->get(group, bit, level); }
    int get(const std::vector<IOInfo>& lines, std::vector<IOState>& states) override {
        return m_Driver->get(lines, states);
    }

    /// Whether the last drive of any line failed.
    bool hasFailed() const;

private:
    SafePointer<IGPIO> m_Driver;
    Listener m_Listener;
    mutable std::mutex m_Mutex;
    std::map<std::pair<int, int>, int> m_Levels; // by group and bit
    bool m_HasFailed = false;
};
