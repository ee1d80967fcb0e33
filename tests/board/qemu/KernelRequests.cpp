#include "board/qemu/KernelRequests.h"

#include <cerrno>
#include <cstdarg>
#include <linux/gpio.h>
#include <sys/ioctl.h> // where the time has 64 bits it gives ioctl() another name
#include <sys/syscall.h>
#include <unistd.h>

namespace {

bool asksForReports(const gpio_v2_line_config& config) {
    auto flags = config.flags;
    for (__u32 i = 0; i < config.num_attrs; ++i) {
        const auto& attribute = config.attrs[i].attr;
        flags |= attribute.id == GPIO_V2_LINE_ATTR_ID_FLAGS ? attribute.flags : 0;
    }
    return (flags & (GPIO_V2_LINE_FLAG_EDGE_RISING | GPIO_V2_LINE_FLAG_EDGE_FALLING)) != 0;
}

} // namespace

extern "C" __attribute__((visibility("default"))) int ioctl(int descriptor, unsigned long request,
                                                            ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    s_Requests.reads += request == GPIO_V2_LINE_GET_VALUES_IOCTL ? 1 : 0;
    s_Requests.attempts += request == GPIO_V2_GET_LINE_IOCTL ? 1 : 0;
    if (s_Requests.silent && request == GPIO_V2_GET_LINE_IOCTL &&
        asksForReports(static_cast<gpio_v2_line_request*>(argument)->config)) {
        errno = ENXIO;
        return -1;
    }
    if (request == s_Requests.broken) {
        errno = s_Requests.error;
        return -1;
    }
    const auto result = syscall(SYS_ioctl, descriptor, request, argument);
    const int error = errno;
    s_Requests.after();
    errno = error;
    return static_cast<int>(result);
}
