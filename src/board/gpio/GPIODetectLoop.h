#pragma once

#include "board/gpio/GPIOBankTable.h"
#include "board/gpio/bank/Epoll.h"
#include "board/gpio/bank/GPIOBankWatch.h"
#include "board/runtime/FileDescriptor.h"
#include "platform/GpioDetect.h"
#include "platform/base/Mutex.h"

#include <map>
#include <memory>
#include <optional>
#include <set>

/// What a detector's thread does: waits for changes of the watched lines and calls the handler.
/// Shared with a pass in progress, so that the handler may destroy the detector. Thread-safe; the
/// lock is not held while the handler runs.
class GPIODetectLoop : public std::enable_shared_from_this<GPIODetectLoop> {
public:
    /// Starts over with the banks of this device and no line. False, and `cause`, on failure.
    bool open(const std::string& device, Cause& cause);

    /// Forgets banks, lines and handler.
    void close();

    void setHandler(int signalNumber, IGPIODetect::Handler handler);

    /// True when it is open and has a handler; else false, and `cause`.
    bool isReady(Cause& cause);

    /// False, and `cause`, on failure.
    bool addLine(int group, int bit, Cause& cause);
    bool removeLine(int group, int bit, Cause& cause);

    /// Waits until something happens or the thread shall stop, and calls the handler at most once.
    int pass();

private:
    struct Group {
        std::set<int> bits;
        std::unique_ptr<GPIOBankWatch> watch; // null while the bank is lost
        const GPIOBank* bank = nullptr;       // which is watched; to be told from others only
        unsigned readable = 0;                // of the watch's descriptors, as the last wait saw
        bool isNews = false;                  // lost or restored outside a pass
    };

    bool makeDescriptors(Cause& cause);
    void forgetLines() NVRHW_REQUIRES(m_Mutex);
    void forget(int number, int bit) NVRHW_REQUIRES(m_Mutex);
    bool beginWatch(int number, Group& group, Cause& cause) NVRHW_REQUIRES(m_Mutex);
    void endWatch(Group& group) NVRHW_REQUIRES(m_Mutex);
    bool restore(int number, Group& group) NVRHW_REQUIRES(m_Mutex);
    bool waitForEvents();
    int prepareWait();
    void noteReadable(std::uint64_t tag);
    bool collectChanges(GPIOBankTable::Attention& attention);
    GPIOBankWatch::Finding drain(Group& group) NVRHW_REQUIRES(m_Mutex);
    void callHandler();

    XQMutex m_Mutex;
    // All watches behind one descriptor, so that lines can be added while a pass waits for it. Made
    // by the first open(), before there is a thread.
    std::optional<Epoll> m_Epoll;
    FileDescriptor m_Wake; // written to a pass that waits when what it waits for has changed
    bool m_IsWaiting NVRHW_GUARDED_BY(m_Mutex) = false;
    std::shared_ptr<GPIOBankTable> m_Banks NVRHW_GUARDED_BY(m_Mutex);
    std::map<int, Group> m_Groups NVRHW_GUARDED_BY(m_Mutex);
    IGPIODetect::Handler m_Handler NVRHW_GUARDED_BY(m_Mutex) = nullptr;
    int m_SignalNumber NVRHW_GUARDED_BY(m_Mutex) = 0;
};
