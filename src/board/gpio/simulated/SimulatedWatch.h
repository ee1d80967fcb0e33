#pragma once

#include "board/gpio/bank/DirectoryEvents.h"
#include "board/gpio/bank/GPIOBankWatch.h"

#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <vector>

/// Watches the files of a simulated bank. Not thread-safe.
class SimulatedWatch : public GPIOBankWatch {
public:
    /// Watches the entry of a device's directory; null, and `cause`, when that is not possible.
    static std::unique_ptr<GPIOBankWatch> begin(const std::string& device, int group, Cause& cause);

    std::vector<int> getDescriptors() const override { return {m_Events.getDescriptor()}; }
    int getTimeout() const override;
    bool add(int bit, Cause& cause) override;
    void remove(int bit) override;
    Finding drain(unsigned readable) override;

private:
    using Clock = std::chrono::steady_clock;

    SimulatedWatch(const std::string& device, int group);

    Finding judge(const DirectoryEvents::Event& event);
    Finding judge(const std::string& file);
    Finding takeDue();

    DirectoryEvents m_Events;
    const std::string m_Device;
    const int m_Group;
    const std::string m_Entry; // of the bank in the device's directory
    int m_DeviceNumber = -1;
    std::map<std::string, int> m_Files; // of the covered lines, with their debounce times
    std::map<std::string, Clock::time_point> m_Due; // of those whose new level has to hold first
};
