#pragma once

#include "board/gpio/bank/GPIOBank.h"
#include "board/runtime/FileDescriptor.h"
#include "platform/base/Mutex.h"

#include <map>
#include <string>

/// A bank made of files: a directory with one file per line, named by the bit, that holds the
/// level as "0" or "1", white space behind it allowed. Any process may read and write the files.
///
/// A line with a debounce time keeps the level it had until its file has been left alone for that
/// long; a file that is written again and again does not count as a new level.
class SimulatedBank : public GPIOBank {
public:
    /// Milliseconds: how coarse the times of files are.
    static constexpr int CLOCK_TICK = 10;

    SimulatedBank(const std::string& device, int group);

    /// True when the file of a line has not been written for this time, in milliseconds.
    static bool hasHeld(const std::string& path, int time);

    bool isCurrent(const struct stat& entry) override;
    void read(const std::vector<GPIOReading*>& readings) override;
    bool drive(int bit, int level, Cause& cause) override;
    std::unique_ptr<GPIOBankWatch> watch(Cause& cause) override;

private:
    struct Content;

    std::string lineFile(int bit) const;
    FileDescriptor openLine(int bit, int mode, Cause& cause) const;
    bool readLine(int bit, Content& content, Cause& cause) const;
    Cause notAFile(int bit) const;
    int debounce(int bit, int level);

    const std::string m_Device;
    const int m_Group;
    const std::string m_Entry; // of the bank in the device's directory
    const FileDescriptor m_Directory;
    XQMutex m_Mutex;
    std::map<int, int> m_Held NVRHW_GUARDED_BY(m_Mutex); // the levels of lines with a debounce time
};
