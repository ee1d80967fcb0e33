#pragma once

#include "board/runtime/FileDescriptor.h"
#include "platform/Cause.h"

#include <cstdint>
#include <sys/epoll.h>

/// Descriptors behind one, which is readable as long as any of them is. Thread-safe.
class Epoll {
public:
    Epoll() : m_Epoll(epoll_create1(EPOLL_CLOEXEC)) {}

    int getDescriptor() const { return m_Epoll.get(); }

    /// `tag` is what wait() tells it by. False, and `cause`, on failure.
    bool add(int descriptor, std::uint64_t tag, Cause& cause) const {
        epoll_event interest{};
        interest.events = EPOLLIN;
        interest.data.u64 = tag;
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

    /// Hands the tags of those that are readable to `each`, after waiting for at most so many
    /// milliseconds, or without limit when they are negative. What is too much for one call is
    /// readable again in the next.
    template <typename Each> void wait(int milliseconds, Each each) const {
        epoll_event ready[MOST_READY];
        const int count = epoll_wait(m_Epoll.get(), ready, MOST_READY, milliseconds);
        for (int i = 0; i < count; ++i) {
            each(ready[i].data.u64);
        }
    }

private:
    static constexpr int MOST_READY = 32;

    const FileDescriptor m_Epoll;
};
