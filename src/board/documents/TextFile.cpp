#include "board/documents/TextFile.h"

#include "board/documents/ConfigError.h"
#include "board/runtime/FileDescriptor.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

void checkIsRegular(const FileDescriptor& file, const std::string& path) {
    struct stat status {};
    if (fstat(file.get(), &status) != 0) {
        throw ConfigError::fromErrno(path);
    }
    if (S_ISDIR(status.st_mode)) {
        errno = EISDIR;
        throw ConfigError::fromErrno(path);
    }
    if (!S_ISREG(status.st_mode)) {
        throw ConfigError(path, 0, "", "not a regular file");
    }
}

std::string readAll(const FileDescriptor& file, const std::string& path) {
    std::string text;
    char block[16 * 1024];
    for (;;) {
        const ssize_t count = ::read(file.get(), block, sizeof block);
        if (count == 0) {
            return text;
        }
        if (count < 0 && errno != EINTR) {
            throw ConfigError::fromErrno(path);
        }
        text.append(block, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (text.size() > TextFile::MAX_SIZE) {
            throw ConfigError(path, 0, "",
                              "larger than " + std::to_string(TextFile::MAX_SIZE) + " bytes");
        }
    }
}

void checkIsText(const std::string& text, const std::string& path) {
    const auto zero = std::find(text.begin(), text.end(), '\0');
    if (zero != text.end()) {
        const auto line = 1 + std::count(text.begin(), zero, '\n');
        throw ConfigError(path, static_cast<int>(line), "", "a zero byte: not a text file");
    }
}

} // namespace

bool TextFile::readIfPresent(const std::string& path, std::string& text) {
    if (path.empty()) {
        throw ConfigError("no file name is set");
    }
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isValid()) {
        if (errno == ENOENT) {
            return false;
        }
        throw ConfigError::fromErrno(path);
    }
    checkIsRegular(file, path);
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
