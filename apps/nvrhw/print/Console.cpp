#include "print/Console.h"

#include "print/Text.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr int INDENT = 2;

int output = STDOUT_FILENO;

// False, with errno, on failure.
bool writeWhole(int file, const std::string& text) {
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = write(file, text.data() + written, text.size() - written);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        written += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    return true;
}

} // namespace

void Console::open() {
    Text::useLanguage();
    output = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (dup2(STDERR_FILENO, STDOUT_FILENO) < 0) { // it may be closed
        const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        dup2(nowhere, STDOUT_FILENO);
    }
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
}

int Console::file() { return output; }

void Console::print(const std::string& text) {
    if (writeWhole(output, text)) {
        return;
    }
    if (errno == EPIPE) {
        throw ReaderGone();
    }
    throw CommandError(std::string("standard output cannot be written: ") + std::strerror(errno));
}

void Console::printDocument(const Value& document) { print(jsonText(document, INDENT)); }

void Console::printLine(const Record& object) { print(jsonText(object, -1)); }

void Console::complain(const std::string& text) {
    writeWhole(STDERR_FILENO, "nvrhw: " + Text::harmless(text) + "\n");
}

bool Console::isTerminal() { return isatty(output) != 0; }

int Console::columns() {
    winsize size{};
    return isTerminal() && ioctl(output, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

bool Console::hasColours() {
    const char* unwanted = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    return isTerminal() && (unwanted == nullptr || *unwanted == '\0') && terminal != nullptr &&
           std::strcmp(terminal, "dumb") != 0;
}
