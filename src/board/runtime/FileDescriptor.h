#pragma once

#include <unistd.h>
#include <utility>

/// Owns a file descriptor; negative when there is none.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor = -1) : m_Descriptor(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept
        : m_Descriptor(std::exchange(other.m_Descriptor, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(m_Descriptor, other.m_Descriptor);
        return *this;
    }
    ~FileDescriptor() {
        if (isValid()) {
            ::close(m_Descriptor);
        }
    }

    int get() const { return m_Descriptor; }
    bool isValid() const { return m_Descriptor >= 0; }

private:
    int m_Descriptor;
};
