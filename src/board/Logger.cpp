#include "platform/Diagnostics.h"

#include <algorithm>
#include <cerrno>
#include <syslog.h>
#include <unistd.h>

void Logger::writeLog(const char* subject, const char* text, const char* file, int line) {
    std::string record = "nvrhw: " + std::string(subject) + ": " + text + " (" + file + ":" +
                         std::to_string(line) + ")";
    std::replace_if(
        record.begin(), record.end(), [](unsigned char c) { return c < ' '; }, ' ');
    syslog(LOG_USER | LOG_ERR, "%s", record.c_str());

    // One call, so that lines of several threads and processes do not mix.
    const std::string out = record + "\n";
    std::size_t written = 0;
    while (written < out.size()) {
        const ssize_t count = write(STDERR_FILENO, out.data() + written, out.size() - written);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            break;
        }
        written += static_cast<std::size_t>(count);
    }
}
