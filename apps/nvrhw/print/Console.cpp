#include "print/Console.h"

#include "print/CommandError.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace {

constexpr int INDENT = 2;

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

// Texts of the configuration files need not be UTF-8, JSON must be.
std::string dump(const Json& document, int indent) {
    return document.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace

void Console::print(const std::string& text) {
    if (writeWhole(STDOUT_FILENO, text)) {
        return;
    }
    if (errno == EPIPE) {
        throw ReaderGone();
    }
    throw CommandError(std::string("standard output cannot be written: ") + std::strerror(errno));
}

void Console::printDocument(const Json& document) { print(dump(document, INDENT)); }

void Console::printLine(const Json& object) { print(dump(object, -1)); }

void Console::complain(const std::string& text) {
    writeWhole(STDERR_FILENO, "nvrhw: " + harmless(text) + "\n");
}

std::string Console::harmless(std::string text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        const bool isLong = c == 0xC2 && next >= 0x80 && next < 0xA0; // UTF-8 has some more
        if (isLong || c < ' ' || c == 0x7F) {
            text.replace(i, isLong ? 2 : 1, "?");
        }
    }
    return text;
}

bool Console::hasColours() {
    const char* unwanted = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    return isatty(STDOUT_FILENO) != 0 && (unwanted == nullptr || *unwanted == '\0') &&
           terminal != nullptr && std::strcmp(terminal, "dumb") != 0;
}
