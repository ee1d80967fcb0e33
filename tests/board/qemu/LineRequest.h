#pragma once

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <linux/gpio.h>
#include <string>
#include <sys/ioctl.h>
#include <system_error>
#include <unistd.h>

/// One line held by someone else than the code under test; while this lives nobody else gets it.
/// What fails throws std::system_error: EBUSY for a line that is held.
class LineRequest {
public:
    /// flags: GPIO_V2_LINE_FLAG_INPUT, or GPIO_V2_LINE_FLAG_OUTPUT, which starts low.
    LineRequest(const std::string& device, unsigned line, std::uint64_t flags) {
        const int chip = open(device.c_str(), O_RDWR | O_CLOEXEC);
        check(chip, device);
        gpio_v2_line_request request = {};
        request.offsets[0] = line;
        request.num_lines = 1;
        request.config.flags = flags;
        std::strcpy(request.consumer, "someone-else");
        const int result = ioctl(chip, GPIO_V2_GET_LINE_IOCTL, &request);
        const int error = errno;
        close(chip);
        errno = error;
        check(result, device + " line " + std::to_string(line));
        m_Line = request.fd;
    }
    ~LineRequest() { close(m_Line); }
    LineRequest(const LineRequest&) = delete;
    LineRequest& operator=(const LineRequest&) = delete;

private:
    static void check(int result, const std::string& subject) {
        if (result < 0) {
            throw std::system_error(errno, std::generic_category(), subject);
        }
    }

    int m_Line = -1;
};
