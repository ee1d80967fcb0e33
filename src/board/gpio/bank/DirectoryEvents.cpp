#include "board/gpio/bank/DirectoryEvents.h"

#include <climits>

namespace {

constexpr std::size_t BUFFER_SIZE = 16384;
constexpr std::size_t LONGEST_EVENT = sizeof(inotify_event) + NAME_MAX + 1;
constexpr int MOST_BUFFERS = 64; // a writer that never pauses must not hold up the detector

constexpr std::uint32_t SELF = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t LOSS = SELF | IN_IGNORED | IN_UNMOUNT | IN_Q_OVERFLOW;

} // namespace

bool DirectoryEvents::begin(Cause& cause) {
    m_Inotify = FileDescriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (!m_Inotify.isValid()) {
        cause = Cause::fromErrno("", "inotify_init1");
    }
    return m_Inotify.isValid();
}

int DirectoryEvents::watch(const std::string& directory, std::uint32_t events, Cause& cause) {
    const int number =
        inotify_add_watch(m_Inotify.get(), directory.c_str(), events | SELF | IN_ONLYDIR);
    if (number < 0) {
        cause = Cause::fromErrno("", "inotify_add_watch " + directory);
    }
    return number;
}

void DirectoryEvents::take(const std::function<void(const Event&)>& each) {
    alignas(inotify_event) char buffer[BUFFER_SIZE];
    for (int i = 0; i < MOST_BUFFERS; ++i) {
        const ssize_t size = ::read(m_Inotify.get(), buffer, sizeof(buffer));
        if (size <= 0) {
            return; // this descriptor does not fail otherwise
        }
        for (const char* next = buffer; next < buffer + size;) {
            const auto* event = reinterpret_cast<const inotify_event*>(next);
            each({event->wd, event->len != 0 ? event->name : "", (event->mask & LOSS) != 0});
            next += sizeof(inotify_event) + event->len;
        }
        if (static_cast<std::size_t>(size) <= BUFFER_SIZE - LONGEST_EVENT) {
            return; // one more would have had room
        }
    }
}
