#pragma once

#include "board/runtime/FileDescriptor.h"

#include <cerrno>
#include <initializer_list>
#include <string>
#include <sys/ioctl.h>

/// A device of the kernel, open for as long as the object lives. What fails throws a
/// std::runtime_error: "<path>: <request>: <the system's text>", with a hint if there is one.
class DeviceFile {
public:
    /// What an error of this device means.
    struct Hint {
        int error; ///< as errno has it
        const char* text;
    };
    using Hints = std::initializer_list<Hint>;

    /// `path` is a path of the board, `access` one of O_RDONLY, O_WRONLY and O_RDWR.
    DeviceFile(const std::string& path, int access, Hints hints = {});

    /// Makes a request, which an error calls `what`.
    template <typename Argument>
    void control(unsigned long request, Argument argument, const std::string& what,
                 Hints hints = {}) const {
        if (::ioctl(m_File.get(), request, argument) < 0) {
            fail(m_Path + ": " + what, hints);
        }
    }

    /// The same, but false when the device does not support it.
    template <typename Argument>
    bool offer(unsigned long request, Argument argument, const std::string& what) const {
        const bool done = ::ioctl(m_File.get(), request, argument) >= 0;
        if (!done && errno != EOPNOTSUPP) {
            fail(m_Path + ": " + what, {});
        }
        return done;
    }

    /// Throws for the present errno, "<what>: <the system's text>".
    [[noreturn]] static void fail(const std::string& what, Hints hints);

private:
    std::string m_Path; ///< where it really is
    FileDescriptor m_File;
};
