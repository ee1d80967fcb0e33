#include "platform/Gpio.h"

#include "board/gpio/GPIOBankTable.h"
#include "platform/Diagnostics.h"
#include "platform/base/Spare.h"

namespace {

constexpr char SOURCE[] = "GPIO";

std::shared_ptr<GPIOBankTable> noBanks() { return std::make_shared<GPIOBankTable>(""); }

} // namespace

// Never null and only accessed atomically: init() and uninit() may come while other threads are
// reading and driving.
struct GPIO::Impl {
    std::shared_ptr<GPIOBankTable> banks = noBanks();
    Spare<GPIOBatch> batches;
};

GPIO::GPIO() : m_DeviceName(GPIODevice::PATH), m_Impl(new Impl) {}

GPIO::~GPIO() noexcept = default;

int GPIO::init() {
    const auto banks = GPIOBankTable::of(GlobalEnv::getInstance()->resolve(m_DeviceName));
    std::atomic_store(&m_Impl->banks, banks);
    if (const Cause cause = banks->device().fault()) {
        Logger::writeLog(GPIOFaultBook::SUBJECT, ("no GPIO device: " + cause.text()).c_str(),
                         SOURCE, __LINE__);
        return 0;
    }
    return 1;
}

int GPIO::uninit() {
    std::atomic_store(&m_Impl->banks, noBanks());
    return 1;
}

int GPIO::set(int group, int bit, int level) {
    return std::atomic_load(&m_Impl->banks)->drive(group, bit, level != 0 ? 1 : 0) ? 1 : 0;
}

int GPIO::get(int group, int bit, int& level) {
    const auto batch = m_Impl->batches.take();
    batch->begin(1);
    batch->set(0, group, bit);
    if (!std::atomic_load(&m_Impl->banks)->read(*batch)) {
        return 0;
    }
    level = batch->readings().front().level;
    return 1;
}

int GPIO::get(const std::vector<IOInfo>& lines, std::vector<IOState>& states) {
    const auto batch = m_Impl->batches.take();
    batch->begin(lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        batch->set(i, lines[i].getGroupId(), lines[i].getBitPosion());
    }
    const bool all = std::atomic_load(&m_Impl->banks)->read(*batch);
    states.clear();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!batch->readings()[i].cause) {
            states.emplace_back(lines[i].getId(), batch->readings()[i].level);
        }
    }
    return all ? 1 : 0;
}
