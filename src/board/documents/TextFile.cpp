#include "board/documents/TextFile.h"

#include "board/documents/ConfigError.h"
#include "board/runtime/FileDescriptor.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr std::size_t BLOCK = std::size_t{16} * 1024;

std::size_t sizeOf(const FileDescriptor& file, const std::string& path) {
    struct stat status {};
    if (fstat(file.get(), &status) != 0) {
        throw ConfigError::fromErrno(path);
    }
    if (S_ISDIR(status.st_mode)) {
        errno = EISDIR;
        throw ConfigError::fromErrno(path);
    }
    if (!S_ISREG(status.st_mode)) {
        throw ConfigError(path, 0, "not a regular file");
    }
    return static_cast<std::size_t>(status.st_size);
}

// A file may grow meanwhile, and those of the kernel do not tell their size before.
std::string readAll(const FileDescriptor& file, const std::string& path) {
    const std::size_t expected = std::min(sizeOf(file, path), TextFile::MAX_SIZE);
    std::string text(expected + 1, '\0');
    for (std::size_t size = 0;;) {
        const ssize_t count = ::read(file.get(), text.data() + size, text.size() - size);
        if (count < 0 && errno != EINTR) {
            throw ConfigError::fromErrno(path);
        }
        size += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        if (size > TextFile::MAX_SIZE) {
            throw ConfigError(path, 0,
                              "larger than " + std::to_string(TextFile::MAX_SIZE) + " bytes");
        }
        if (count == 0) {
            text.resize(size);
            return text;
        }
        if (size == text.size()) {
            text.resize(size + BLOCK);
        }
    }
}

void checkIsText(const std::string& text, const std::string& path) {
    const std::size_t zero = text.find('\0');
    if (zero != text.npos) {
        const auto end = text.begin() + static_cast<std::ptrdiff_t>(zero);
        const auto line = 1 + std::count(text.begin(), end, '\n');
        throw ConfigError(path, static_cast<int>(line), "a zero byte: not a text file");
    }
}

/// How many bytes the character at `at` has in UTF-8; 0 when it is none.
std::size_t lengthOfCharacter(const std::string& text, std::size_t at) {
    const auto byte = [&](std::size_t i) {
        return at + i < text.size() ? static_cast<unsigned char>(text[at + i]) : 0U;
    };
    const std::size_t length = byte(0) < 0x80   ? 1
                               : byte(0) < 0xC2 ? 0
                               : byte(0) < 0xE0 ? 2
                               : byte(0) < 0xF0 ? 3
                               : byte(0) < 0xF5 ? 4
                                                : 0;
    for (std::size_t i = 1; i < length; ++i) {
        if (byte(i) < 0x80 || byte(i) > 0xBF) {
            return 0;
        }
    }
    const unsigned start = byte(0) << 8 | byte(1); // neither too long, nor a surrogate, nor beyond
    const bool isOutside = (start >= 0xE000 && start < 0xE0A0) ||
                           (start >= 0xEDA0 && start < 0xEE00) ||
                           (start >= 0xF000 && start < 0xF090) || start >= 0xF490;
    return length > 2 && isOutside ? 0 : length;
}

} // namespace

int TextFile::lineNotUtf8(const std::string& text) {
    int line = 1;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = lengthOfCharacter(text, at);
        if (length == 0) {
            return line;
        }
        line += text[at] == '\n' ? 1 : 0;
        at += length;
    }
    return 0;
}

bool TextFile::readIfPresent(const std::string& path, std::string& text) {
    if (path.empty()) {
        throw ConfigError("", 0, "no file name is set");
    }
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isValid()) {
        if (errno == ENOENT) {
            return false;
        }
        throw ConfigError::fromErrno(path);
    }
    std::string content = readAll(file, path);
    checkIsText(content, path);
    text = std::move(content);
    return true;
}

std::string TextFile::read(const std::string& path) {
    std::string text;
    if (!readIfPresent(path, text)) {
        errno = ENOENT;
        throw ConfigError::fromErrno(path);
    }
    return text;
}
