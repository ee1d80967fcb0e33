#pragma once

#include "board/gpio/bank/GPIOBankWatch.h"
#include "board/runtime/FileDescriptor.h"

#include <memory>
#include <vector>

class KernelBank;

/// Watches lines of a kernel bank. Thread-safe, as the bank is, which does the work.
class KernelWatch : public GPIOBankWatch {
public:
    /// Null, and `cause`, on failure.
    static std::unique_ptr<GPIOBankWatch> begin(const std::shared_ptr<KernelBank>& bank,
                                                Cause& cause);
    ~KernelWatch() override;

    std::vector<int> getDescriptors() const override;
    int getTimeout() const override;
    bool add(int bit, Cause& cause) override;
    void remove(int bit) override;
    Finding drain(unsigned readable) override;

private:
    explicit KernelWatch(const std::shared_ptr<KernelBank>& bank);

    const std::shared_ptr<KernelBank> m_Bank;
    const FileDescriptor m_Event; // written when another has found our changes
};
