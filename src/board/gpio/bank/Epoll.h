#pragma once

#include "board/runtime/FileDescriptor.h"
#include "platform/Cause.h"

#include <sys/epoll.h>

/// Descriptors behind one, which is readable as long as any of them is. Thread-safe.
class Epoll {
public:
    Epoll() : m_Epoll(epoll_create1(EPOLL_CLOEXEC)) {}

    int getDescriptor() const { return m_Epoll.get(); }

    /// False, and `cause`, on failure.
    bool add(int descriptor, Cause& cause) const {
        epoll_event interest{};
        interest.events = EPOLLIN;
        if (epoll_ctl(m_Epoll.get(), EPOLL_CTL_ADD, descriptor, &interest) != 0) {
            cause = Cause::fromErrno("", "epoll_ctl");
            return false;
        }
        return true;
    }

    /// To be called before the descriptor is closed: if a child process has inherited it, it would
    /// stay here.
    void remove(int descriptor) const {
        epoll_ctl(m_Epoll.get(), EPOLL_CTL_DEL, descriptor, nullptr);
    }

private:
    const FileDescriptor m_Epoll;
};
