#include "board/gpio/kernel/KernelWatch.h"

#include "board/gpio/kernel/KernelBank.h"
#include "platform/Cause.h"

#include <sys/eventfd.h>

namespace {

constexpr int RETRY_INTERVAL = 200; // milliseconds between looks at lines that report nothing
constexpr int WITHOUT_LIMIT = -1;

} // namespace

std::unique_ptr<GPIOBankWatch> KernelWatch::begin(const std::shared_ptr<KernelBank>& bank,
                                                  Cause& cause) {
    std::unique_ptr<KernelWatch> watch(new KernelWatch(bank));
    if (!watch->m_Event.isValid()) {
        cause = Cause::fromErrno("", "eventfd");
        return nullptr;
    }
    return watch;
}

KernelWatch::KernelWatch(const std::shared_ptr<KernelBank>& bank)
    : m_Bank(bank), m_Event(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    m_Bank->join(*this, m_Event.get());
}

KernelWatch::~KernelWatch() { m_Bank->leave(*this); }

std::vector<int> KernelWatch::getDescriptors() const {
    return {m_Bank->getReports(), m_Bank->getEntry(), m_Event.get()};
}

int KernelWatch::getTimeout() const {
    return m_Bank->isComplete(*this) ? WITHOUT_LIMIT : RETRY_INTERVAL;
}

bool KernelWatch::add(int bit, Cause& cause) { return m_Bank->cover(*this, bit, cause); }

void KernelWatch::remove(int bit) { m_Bank->uncover(*this, bit); }

GPIOBankWatch::Finding KernelWatch::drain(unsigned readable) {
    return m_Bank->drain(*this, readable);
}
