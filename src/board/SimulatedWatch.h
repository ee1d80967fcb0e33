#pragma once

#include "board/FileDescriptor.h"
#include "board/GPIOBankWatch.h"

#include <memory>
#include <set>
#include <string>

struct inotify_event;

/// Watches the files of a simulated bank. Not thread-safe.
class SimulatedWatch : public GPIOBankWatch {
public:
    /// Watches the entry of a device's directory; null, and `cause`, when that is not possible.
    static std::unique_ptr<GPIOBankWatch> begin(const std::string& device, const std::string& entry,
                                                std::string& cause);

    int getDescriptor() const override { return m_Inotify.get(); }
    bool add(int bit, std::string& cause) override;
    void remove(int bit) override;
    Finding drain() override;

private:
    SimulatedWatch(FileDescriptor inotify, const std::string& entry);

    Finding judge(const inotify_event& event) const;

    const FileDescriptor m_Inotify;
    const std::string m_Entry;
    int m_DeviceWatch = -1;
    std::set<std::string> m_Files; // of the covered lines
};
