#pragma once

#include "board/runtime/FileDescriptor.h"
#include "platform/Cause.h"

#include <cstdint>
#include <functional>
#include <string>
#include <sys/inotify.h>

/// What happens to the entries of some directories, and to these themselves. Not thread-safe.
class DirectoryEvents {
public:
    /// An entry is made, moved in, moved out or removed.
    static constexpr std::uint32_t ENTRIES = IN_MOVED_TO | IN_MOVED_FROM | IN_CREATE | IN_DELETE;

    struct Event {
        int directory;    ///< as watch() has numbered it
        std::string name; ///< of the entry; empty when it is the directory itself
        bool isLoss;      ///< the directory has gone or moved, or events have been dropped
    };

    /// False, and `cause`, on failure.
    bool begin(Cause& cause);

    /// Watches a directory for these inotify events, and for its loss. Its number; negative, and
    /// `cause`, on failure.
    int watch(const std::string& directory, std::uint32_t events, Cause& cause);

    /// Readable when take() has something to find.
    int getDescriptor() const { return m_Inotify.get(); }

    /// Hands on what has happened since the last call, without blocking; when that does not end,
    /// the rest is for the next call.
    void take(const std::function<void(const Event&)>& each);

private:
    FileDescriptor m_Inotify;
};
