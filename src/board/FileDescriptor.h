#pragma once

#include <unistd.h>

/// Owns a file descriptor; negative when there is none.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor) : m_Descriptor(descriptor) {}
    ~FileDescriptor() {
        if (isValid()) {
            close(m_Descriptor);
        }
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    int get() const { return m_Descriptor; }
    bool isValid() const { return m_Descriptor >= 0; }

private:
    int m_Descriptor;
};
