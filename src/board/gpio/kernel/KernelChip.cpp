#include "board/gpio/kernel/KernelChip.h"

#include "platform/Cause.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <linux/gpio.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

bool isUnknownRequest() { return errno == ENOTTY || errno == EINVAL; }

// What a line of this library is labelled with, for the messages of other processes and for
// gpioinfo: "nvrhw:<pid>:<program>". The label tells more surely than /proc, which need not show
// the processes of others. The kernel keeps 31 characters, which is enough for all of it.
constexpr char OURS[] = "nvrhw:";
constexpr std::size_t OURS_LENGTH = sizeof(OURS) - 1;

std::string ownLabel() {
    const std::string label = OURS + std::to_string(getpid()) + ":" + program_invocation_short_name;
    return label.substr(0, GPIO_MAX_NAME_SIZE - 1);
}

// The holder of a line, by its label.
std::string nameOf(const std::string& label) {
    const std::size_t end = label.find(':', OURS_LENGTH);
    if (label.compare(0, OURS_LENGTH, OURS) != 0 || end == std::string::npos) {
        return '"' + label + '"';
    }
    return "nvrhw (pid " + label.substr(OURS_LENGTH, end - OURS_LENGTH) + ", " +
           label.substr(end + 1) + "): a running recorder or tool holds its lines";
}

} // namespace

std::unique_ptr<KernelChip> KernelChip::open(const std::string& path, Cause& cause) {
    FileDescriptor device(::open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (!device.isValid()) {
        cause = Cause::fromErrno(path);
        return nullptr;
    }
    std::unique_ptr<KernelChip> chip(new KernelChip(std::move(device), path));
    return chip->identify(cause) ? std::move(chip) : nullptr;
}

void KernelChip::look(const std::string& path, std::string& label, int& lines) {
    const FileDescriptor device(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    gpiochip_info chip{};
    if (ioctl(device.get(), GPIO_GET_CHIPINFO_IOCTL, &chip) == 0) {
        label.assign(chip.label, strnlen(chip.label, sizeof chip.label));
        lines = static_cast<int>(chip.lines);
    }
}

bool KernelChip::identify(Cause& cause) {
    struct stat info {};
    gpiochip_info chip{};
    gpio_v2_line_info line{}; // the first, which every chip has
    if (fstat(m_Chip.get(), &info) != 0 ||
        ioctl(m_Chip.get(), GPIO_GET_CHIPINFO_IOCTL, &chip) != 0) {
        cause = isUnknownRequest() ? Cause{"not a bank: it is no GPIO chip", m_Path}
                                   : Cause::fromErrno(m_Path);
        return false;
    }
    if (ioctl(m_Chip.get(), GPIO_V2_GET_LINEINFO_IOCTL, &line) != 0) {
        cause = isUnknownRequest()
                    ? Cause{"this kernel has no GPIO uAPI v2; it needs Linux 5.10 or later", m_Path}
                    : Cause::fromErrno(m_Path);
        return false;
    }
    m_Number = info.st_rdev;
    m_Count = static_cast<int>(chip.lines);
    return true;
}

bool KernelChip::has(int bit, Cause& cause) const {
    if (bit >= m_Count) {
        cause = {"no line " + std::to_string(bit) + ": the chip has " + std::to_string(m_Count) +
                     ", counted from 0",
                 m_Path};
        cause.bit = bit;
        return false;
    }
    return true;
}

bool KernelChip::isOutput(int bit) const {
    gpio_v2_line_info line{};
    line.offset = static_cast<__u32>(bit);
    return ioctl(m_Chip.get(), GPIO_V2_GET_LINEINFO_IOCTL, &line) == 0 &&
           (line.flags & GPIO_V2_LINE_FLAG_OUTPUT) != 0;
}

std::string KernelChip::describeUse(int bit) const {
    gpio_v2_line_info line{};
    line.offset = static_cast<__u32>(bit);
    if (ioctl(m_Chip.get(), GPIO_V2_GET_LINEINFO_IOCTL, &line) != 0 ||
        (line.flags & GPIO_V2_LINE_FLAG_USED) == 0) {
        return "";
    }
    const std::string consumer(line.consumer, strnlen(line.consumer, sizeof(line.consumer)));
    return consumer.empty() ? "in use" : "held by " + nameOf(consumer);
}

Cause KernelChip::explain(int bit, int error) const {
    Cause cause{"line " + std::to_string(bit), m_Path, 0, error, bit};
    const std::string use = error == EBUSY ? describeUse(bit) : "";
    if (!use.empty()) {
        cause.what += " is " + use;
    }
    return cause;
}

FileDescriptor KernelChip::request(gpio_v2_line_request& request) const {
    const std::string label = ownLabel();
    std::memcpy(request.consumer, label.c_str(), label.size() + 1);
    if (ioctl(m_Chip.get(), GPIO_V2_GET_LINE_IOCTL, &request) != 0) {
        return FileDescriptor();
    }
    return FileDescriptor(request.fd);
}
