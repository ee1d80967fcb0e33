#pragma once

#include "board/gpio/bank/Epoll.h"
#include "board/gpio/bank/GPIOBank.h"
#include "board/gpio/bank/GPIOFaultBook.h"
#include "board/gpio/kernel/EntrySentinel.h"
#include "board/gpio/kernel/KernelLines.h"
#include "platform/base/Mutex.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

class KernelWatch;

/// A bank that is a GPIO chip of the kernel; it ends with the chip. The first use of a line claims
/// it for this process, and it stays claimed until the bank goes.
///
/// Reading leaves the direction of a line as it is, watching makes it an input, driving an output.
/// A line that this process has driven stays an output, also when it is watched: then each drive
/// counts as a change.
class KernelBank : public GPIOBank, public std::enable_shared_from_this<KernelBank> {
public:
    /// The bank at an entry of a device's directory; null, and `cause`, when it cannot be used.
    /// What becomes of watched lines that are held elsewhere is noted in the book.
    static std::shared_ptr<GPIOBank> open(const std::string& device, int group,
                                          const std::shared_ptr<GPIOFaultBook>& book, Cause& cause);

    bool isCurrent(const struct stat& entry) override;
    bool isWatched() override;
    void retire() override;
    void read(const std::vector<GPIOReading*>& readings) override;
    bool drive(int bit, int level, Cause& cause) override;
    std::unique_ptr<GPIOBankWatch> watch(Cause& cause) override;

    /// For the watches. `event` is an eventfd to be written when another has found what the watch
    /// should drain. The descriptors that are readable are those of KernelWatch, in its order.
    void join(const KernelWatch& watch, int event);
    void leave(const KernelWatch& watch);
    bool cover(const KernelWatch& watch, int bit, Cause& cause);
    void uncover(const KernelWatch& watch, int bit);
    GPIOBankWatch::Finding drain(const KernelWatch& watch, unsigned readable);

    /// True when all lines that the watch covers could be had and report their changes.
    bool isComplete(const KernelWatch& watch);

    /// Readable when lines have reported changes, and when the entry was touched.
    int getReports() const { return m_Reports.getDescriptor(); }
    int getEntry() const { return m_Entry.getDescriptor(); }

private:
    struct Watcher {
        int event = -1;
        bool isChanged = false;
        std::set<int> bits{};
    };

    KernelBank(const std::string& device, int group, const std::shared_ptr<GPIOFaultBook>& book);

    bool begin(Cause& cause);
    bool guardEntry(Cause& cause) NVRHW_REQUIRES(m_Mutex);
    bool isMine(const struct stat& entry) NVRHW_REQUIRES(m_Mutex);
    bool isStillThere() NVRHW_REQUIRES(m_Mutex);
    void unwatch(int bit) NVRHW_REQUIRES(m_Mutex);
    void note(const KernelLines::Outcome& outcome);
    void settle(const Watcher* awake = nullptr) NVRHW_REQUIRES(m_Mutex);
    void lose() NVRHW_REQUIRES(m_Mutex);

    const std::string m_Device;
    const int m_Group;
    const std::string m_Path; // of the entry
    const std::shared_ptr<GPIOFaultBook> m_Book;
    const Epoll m_Reports; // over what the lines report
    const Epoll m_Entry;   // over the sentinel
    XQMutex m_Mutex;
    EntrySentinel m_Sentinel NVRHW_GUARDED_BY(m_Mutex);
    std::unique_ptr<KernelLines> m_Lines NVRHW_GUARDED_BY(m_Mutex); // null when the chip is gone
    std::map<const KernelWatch*, Watcher> m_Watchers NVRHW_GUARDED_BY(m_Mutex);
};
