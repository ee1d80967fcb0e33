#include "board/documents/ReplaceableFile.h"

#include "board/documents/ConfigError.h"
#include "board/documents/TextFile.h"

#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>

namespace {

constexpr mode_t PERMISSIONS = 07777;
constexpr mode_t NEW_FILE_MODE = 0644;

std::string withoutLinks(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr),
                                                           &std::free);
    return real == nullptr ? path : real.get();
}

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

/// True when everything was written.
bool writeAll(const FileDescriptor& file, const std::string& text) {
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = ::write(file.get(), text.data() + written, text.size() - written);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        written += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return true;
}

} // namespace

ReplaceableFile::ReplaceableFile(const std::string& path)
    : m_Path(withoutLinks(path)), m_Name(m_Path.substr(m_Path.rfind('/') + 1)),
      m_TemporaryName(m_Name + ".tmp"),
      m_Folder(open(folderOf(m_Path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (!m_Folder.isValid()) {
        throw ConfigError::fromErrno(m_Path, "its folder");
    }
}

void ReplaceableFile::check(bool success) const {
    if (!success) {
        throw ConfigError::fromErrno(m_Path);
    }
}

void ReplaceableFile::lock() {
    int result = 0;
    do {
        result = flock(m_Folder.get(), LOCK_EX);
    } while (result != 0 && errno == EINTR);
    check(result == 0);
}

Cause ReplaceableFile::obstacle() const {
    const bool isWritable = faccessat(m_Folder.get(), ".", W_OK | X_OK, AT_EACCESS) == 0;
    return isWritable ? Cause{} : Cause::fromErrno(m_Path, "its folder");
}

void ReplaceableFile::replace(const std::string& text) {
    if (text.size() > TextFile::MAX_SIZE) {
        errno = EFBIG; // it could not be read again
        throw ConfigError::fromErrno(m_Path);
    }
    try {
        unlinkat(m_Folder.get(), m_TemporaryName.c_str(), 0); // left behind by a power cut
        writeTemporary(text);
        check(renameat(m_Folder.get(), m_TemporaryName.c_str(), m_Folder.get(), m_Name.c_str()) ==
              0);
    } catch (const ConfigError&) {
        unlinkat(m_Folder.get(), m_TemporaryName.c_str(), 0);
        throw;
    }
    check(fsync(m_Folder.get()) == 0);
}

void ReplaceableFile::writeTemporary(const std::string& text) {
    const FileDescriptor file(openat(m_Folder.get(), m_TemporaryName.c_str(),
                                     O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, NEW_FILE_MODE));
    check(file.isValid());
    struct stat old {};
    if (fstatat(m_Folder.get(), m_Name.c_str(), &old, 0) == 0) {
        check(fchmod(file.get(), old.st_mode & PERMISSIONS) == 0);
    }
    check(writeAll(file, text));
    check(fsync(file.get()) == 0);
}
