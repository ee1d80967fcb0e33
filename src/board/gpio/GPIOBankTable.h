#pragma once

#include "board/gpio/GPIOBatch.h"
#include "board/gpio/GPIODevice.h"
#include "board/gpio/bank/GPIOBank.h"
#include "board/gpio/bank/GPIOFaultBook.h"
#include "platform/base/Mutex.h"

#include <map>
#include <memory>
#include <string>

/// The banks of one device, a directory with one entry per group. Banks are made when they are
/// first used, of the kind that the entry has then, and exchanged with it; nothing has to be there
/// when the table is made. Thread-safe.
class GPIOBankTable {
public:
    /// As long as it lasts, the calling thread knows of some banks that nobody has touched their
    /// entries, and need not look. One at a time in a thread.
    class Attention {
    public:
        Attention() = default;
        ~Attention();

        /// The thread has just waited for a watch of this bank, which had nothing to tell of that.
        void add(const GPIOBank* bank);
        Attention(const Attention&) = delete;
        Attention& operator=(const Attention&) = delete;
    };

    /// The table of this device, one for the whole process as long as anybody holds it.
    static std::shared_ptr<GPIOBankTable> of(const std::string& device);

    /// An empty path stands for no device: every operation fails.
    explicit GPIOBankTable(std::string device);

    const GPIODevice& device() const { return m_Device; }

    /// The bank of a line; null, and `cause`, when there is none.
    std::shared_ptr<GPIOBank> find(int group, int bit, Cause& cause);

    /// Reads every line it can; failures are logged. False when any of them failed.
    bool read(GPIOBatch& batch);

    /// Drives a line; a failure is logged and answered with false.
    bool drive(int group, int bit, int level);

    GPIOFaultBook& getFaultBook() { return *m_FaultBook; }

private:
    struct Entry {
        std::string path;
        std::shared_ptr<GPIOBank> bank{};
    };

    std::shared_ptr<GPIOBank> find(int group, Cause& cause);
    Entry& entryOf(int group) NVRHW_REQUIRES(m_Mutex);
    std::shared_ptr<GPIOBank> exchange(int group, Entry& entry, Cause& cause)
        NVRHW_REQUIRES(m_Mutex);
    std::shared_ptr<GPIOBank> open(int group, const struct stat& entry, Cause& cause);
    void read(GPIOBatch::Group& group);

    const GPIODevice m_Device;
    const std::shared_ptr<GPIOFaultBook> m_FaultBook; // shared with the banks
    XQMutex m_Mutex;
    std::map<int, Entry> m_Entries NVRHW_GUARDED_BY(m_Mutex); // they stay, and so do their paths
};
