#include "board/gpio/bank/EntrySentinel.h"

#include "board/runtime/Cause.h"

#include <climits>
#include <cstdlib>
#include <sys/inotify.h>

namespace {

constexpr std::size_t BUFFER_SIZE = 4096;

constexpr std::uint32_t ENTRY_EVENTS = IN_MOVED_TO | IN_MOVED_FROM | IN_CREATE | IN_DELETE;
constexpr std::uint32_t SELF_EVENTS = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t LOSS = SELF_EVENTS | IN_IGNORED | IN_UNMOUNT | IN_Q_OVERFLOW;

} // namespace

bool EntrySentinel::begin(const std::string& directory, const std::string& entry, Cause& cause) {
    m_Inotify = FileDescriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (!m_Inotify.isValid()) {
        cause = Cause::fromErrno("", "inotify_init1");
        return false;
    }
    if (!observe(directory, entry, cause)) { // first: if the entry is exchanged now, it tells
        return false;
    }
    char node[PATH_MAX];
    if (realpath((directory + "/" + entry).c_str(), node) == nullptr) {
        cause = Cause::fromErrno(directory + "/" + entry);
        return false;
    }
    const std::string path = node;
    const std::size_t slash = path.rfind('/');
    return observe(path.substr(0, slash + 1), path.substr(slash + 1), cause);
}

bool EntrySentinel::observe(const std::string& directory, const std::string& name, Cause& cause) {
    const int watch = inotify_add_watch(m_Inotify.get(), directory.c_str(),
                                        ENTRY_EVENTS | SELF_EVENTS | IN_ONLYDIR);
    if (watch < 0) {
        cause = Cause::fromErrno("", "inotify_add_watch " + directory);
        return false;
    }
    m_Names.insert({watch, name});
    return true;
}

bool EntrySentinel::isDisturbed() {
    alignas(inotify_event) char buffer[BUFFER_SIZE];
    bool disturbed = false;
    ssize_t size = 0;
    while ((size = ::read(m_Inotify.get(), buffer, sizeof(buffer))) > 0) {
        for (const char* next = buffer; next < buffer + size;) {
            const auto* event = reinterpret_cast<const inotify_event*>(next);
            const std::string name = event->len != 0 ? event->name : "";
            disturbed =
                disturbed || (event->mask & LOSS) != 0 || m_Names.count({event->wd, name}) != 0;
            next += sizeof(inotify_event) + event->len;
        }
    }
    return disturbed;
}
