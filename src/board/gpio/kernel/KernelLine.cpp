#include "board/gpio/kernel/KernelLine.h"

#include <linux/gpio.h>

namespace {

constexpr std::uint64_t BIAS_FLAGS[] = {0, GPIO_V2_LINE_FLAG_BIAS_PULL_UP,
                                        GPIO_V2_LINE_FLAG_BIAS_PULL_DOWN,
                                        GPIO_V2_LINE_FLAG_BIAS_DISABLED};
constexpr std::uint64_t DRIVE_FLAGS[] = {0, 0, GPIO_V2_LINE_FLAG_OPEN_DRAIN,
                                         GPIO_V2_LINE_FLAG_OPEN_SOURCE};
constexpr std::uint64_t EDGE_FLAGS = GPIO_V2_LINE_FLAG_EDGE_RISING | GPIO_V2_LINE_FLAG_EDGE_FALLING;
constexpr std::uint32_t MICROSECONDS = 1000; // of a millisecond

} // namespace

std::uint64_t KernelLine::flags() const {
    switch (role) {
    case INPUT:
        return GPIO_V2_LINE_FLAG_INPUT | (isSilent ? 0 : EDGE_FLAGS) | BIAS_FLAGS[settings.bias];
    case OUTPUT:
        return GPIO_V2_LINE_FLAG_OUTPUT | DRIVE_FLAGS[settings.drive] | BIAS_FLAGS[settings.bias];
    default:
        return 0; // the kernel takes nothing else for a line whose direction stays
    }
}

std::uint32_t KernelLine::debounce() const {
    const bool debounced = role == INPUT && !isSilent; // the kernel needs the interrupt for it
    return debounced ? static_cast<std::uint32_t>(settings.debounce) * MICROSECONDS : 0;
}
