#include "board/gpio/kernel/KernelRequest.h"

#include "board/gpio/bank/GPIOEdgeTable.h"
#include "board/gpio/kernel/KernelChip.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <iterator>
#include <linux/gpio.h>
#include <map>
#include <sys/ioctl.h>

namespace {

constexpr std::uint64_t BIAS_FLAGS[] = {0, GPIO_V2_LINE_FLAG_BIAS_PULL_UP,
                                        GPIO_V2_LINE_FLAG_BIAS_PULL_DOWN,
                                        GPIO_V2_LINE_FLAG_BIAS_DISABLED};
constexpr std::uint64_t DRIVE_FLAGS[] = {0, 0, GPIO_V2_LINE_FLAG_OPEN_DRAIN,
                                         GPIO_V2_LINE_FLAG_OPEN_SOURCE};
constexpr std::uint64_t EDGE_FLAGS = GPIO_V2_LINE_FLAG_EDGE_RISING | GPIO_V2_LINE_FLAG_EDGE_FALLING;
constexpr std::uint32_t MICROSECONDS = 1000; // of a millisecond

constexpr std::size_t MOST_EVENTS = 64;
constexpr int MOST_READS = 64; // a line that never rests must not hold up the detector

/// The lines, as a mask of their places, that share a value.
template <typename Value> using Masks = std::map<Value, std::uint64_t>;

Masks<std::uint64_t> flagsOf(const std::vector<KernelLine>& lines) {
    Masks<std::uint64_t> masks;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        masks[lines[i].flags()] |= std::uint64_t{1} << i;
    }
    return masks;
}

Masks<std::uint32_t> debouncesOf(const std::vector<KernelLine>& lines) {
    Masks<std::uint32_t> masks;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].debounce() != 0) {
            masks[lines[i].debounce()] |= std::uint64_t{1} << i;
        }
    }
    return masks;
}

gpio_v2_line_config makeConfig(const std::vector<KernelLine>& lines, int level) {
    gpio_v2_line_config config{};
    const auto append = [&](gpio_v2_line_attr_id id, std::uint64_t mask) {
        gpio_v2_line_config_attribute& attribute = config.attrs[config.num_attrs++];
        attribute.attr.id = id;
        attribute.mask = mask;
        return &attribute.attr;
    };
    const auto flags = flagsOf(lines);
    config.flags = flags.begin()->first;
    for (auto other = std::next(flags.begin()); other != flags.end(); ++other) {
        append(GPIO_V2_LINE_ATTR_ID_FLAGS, other->second)->flags = other->first;
    }
    for (const auto& [period, mask] : debouncesOf(lines)) {
        append(GPIO_V2_LINE_ATTR_ID_DEBOUNCE, mask)->debounce_period_us = period;
    }
    if (lines.front().role == KernelLine::OUTPUT) {
        append(GPIO_V2_LINE_ATTR_ID_OUTPUT_VALUES, 1)->values = level != 0 ? 1 : 0;
    }
    return config;
}

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

// Outputs have a request of their own: theirs is not asked for.
bool KernelRequest::fit(const std::vector<KernelLine>& lines) {
    return lines.size() <= GPIO_V2_LINES_MAX &&
           flagsOf(lines).size() - 1 + debouncesOf(lines).size() <= GPIO_V2_LINE_NUM_ATTRS_MAX;
}

std::unique_ptr<KernelRequest>
KernelRequest::open(const KernelChip& chip, const std::vector<KernelLine>& lines, int level) {
    gpio_v2_line_request request{};
    std::transform(lines.begin(), lines.end(), request.offsets,
                   [](const KernelLine& line) { return static_cast<__u32>(line.bit); });
    request.num_lines = static_cast<__u32>(lines.size());
    request.config = makeConfig(lines, level);
    FileDescriptor descriptor = chip.request(request);
    if (!descriptor.isValid() || fcntl(descriptor.get(), F_SETFL, O_NONBLOCK) != 0) {
        return nullptr;
    }
    return std::unique_ptr<KernelRequest>(new KernelRequest(std::move(descriptor), lines));
}

bool KernelRequest::hasRoom() const {
    const KernelLine& first = m_Lines.front();
    return m_Lines.size() < GPIO_V2_LINES_MAX && first.role != KernelLine::OUTPUT && !first.isAlone;
}

void KernelRequest::ask(std::size_t place) {
    m_Asked = (m_Error == UNREAD ? m_Asked : 0) | std::uint64_t{1} << place;
    m_Error = UNREAD;
}

bool KernelRequest::read(std::size_t place, int& level) {
    if (m_Error == UNREAD) {
        gpio_v2_line_values values{};
        values.mask = m_Asked;
        m_Error = ioctl(m_Request.get(), GPIO_V2_LINE_GET_VALUES_IOCTL, &values) == 0 ? 0 : errno;
        m_Levels = values.bits;
    }
    errno = m_Error;
    level = static_cast<int>(m_Levels >> place & 1);
    return m_Error == 0;
}

// Never closed and asked for again: that may change the level for a moment.
bool KernelRequest::drive(const GPIOLineSettings& settings, int level) {
    if (m_Lines.front().role == KernelLine::OUTPUT) {
        gpio_v2_line_values values{};
        values.mask = 1;
        values.bits = level != 0 ? 1 : 0;
        return ioctl(m_Request.get(), GPIO_V2_LINE_SET_VALUES_IOCTL, &values) == 0;
    }
    std::vector<KernelLine> output{m_Lines};
    output.front().role = KernelLine::OUTPUT;
    output.front().settings = settings;
    gpio_v2_line_config config = makeConfig(output, level);
    if (ioctl(m_Request.get(), GPIO_V2_LINE_SET_CONFIG_IOCTL, &config) != 0) {
        return false;
    }
    m_Lines = output;
    return true;
}

bool KernelRequest::takeChanges(int group, std::vector<int>& bits) const {
    gpio_v2_line_event events[MOST_EVENTS];
    for (int i = 0; i < MOST_READS; ++i) {
        const ssize_t size = ::read(m_Request.get(), events, sizeof(events));
        if (size <= 0) {
            return size < 0 && (errno == EAGAIN || errno == EINTR);
        }
        const auto count = static_cast<std::size_t>(size) / sizeof(*events);
        for (std::size_t k = 0; k < count; ++k) {
            const int bit = static_cast<int>(events[k].offset);
            GPIOEdgeTable::note(group, bit, events[k].timestamp_ns);
            bits.push_back(bit);
        }
        if (count < MOST_EVENTS) {
            return true; // that was all
        }
    }
    return true;
}
