#pragma once

#include "board/gpio/bank/Epoll.h"
#include "board/gpio/bank/GPIOBankWatch.h"
#include "board/runtime/FileDescriptor.h"

#include <memory>
#include <string>

class KernelBank;

/// Watches lines of a kernel bank. Thread-safe, as the bank is, which does the work.
class KernelWatch : public GPIOBankWatch {
public:
    /// Null, and `cause`, on failure.
    static std::unique_ptr<GPIOBankWatch> begin(const std::shared_ptr<KernelBank>& bank,
                                                Cause& cause);
    ~KernelWatch() override;

    int getDescriptor() const override { return m_Epoll.getDescriptor(); }
    int getTimeout() const override;
    bool add(int bit, Cause& cause) override;
    void remove(int bit) override;
    Finding drain() override;

private:
    explicit KernelWatch(const std::shared_ptr<KernelBank>& bank);

    const std::shared_ptr<KernelBank> m_Bank;
    const FileDescriptor m_Event; // written when another watch's drain() has found our changes
    const Epoll m_Epoll;          // over the bank and the event
};
