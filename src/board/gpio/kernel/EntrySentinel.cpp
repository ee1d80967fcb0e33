#include "board/gpio/kernel/EntrySentinel.h"

#include <climits>
#include <cstdlib>

bool EntrySentinel::begin(const std::string& directory, const std::string& entry, Cause& cause) {
    if (!m_Events.begin(cause) ||
        !observe(directory, entry, cause)) { // first: if the entry is exchanged now, it tells
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
    const int number = m_Events.watch(directory, DirectoryEvents::ENTRIES, cause);
    m_Names.insert({number, name});
    return number >= 0;
}

bool EntrySentinel::isDisturbed() {
    bool disturbed = false;
    m_Events.take([&](const DirectoryEvents::Event& event) {
        disturbed = disturbed || event.isLoss || m_Names.count({event.directory, event.name}) != 0;
    });
    return disturbed;
}
