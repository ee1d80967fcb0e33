#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

/// How often the named threads of this process have waited, and so woken up, since it was made.
/// Ours have names; those of a sanitizer do not.
class ThreadWaits {
public:
    long count() const {
        long waits = 0;
        for (const auto& [thread, number] : look()) {
            const auto before = m_Before.find(thread);
            waits += number - (before != m_Before.end() ? before->second : 0);
        }
        return waits;
    }

private:
    using ByThread = std::map<std::string, long>;

    static std::string nameOf(const std::filesystem::path& thread) {
        std::string name;
        std::getline(std::ifstream(thread / "comm"), name);
        return name;
    }

    static ByThread look() {
        ByThread waits;
        const std::string own = nameOf("/proc/self");
        for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
            std::ifstream status(nameOf(thread) != own ? thread.path() / "status" : "");
            for (std::string word; status >> word;) {
                if (word == "voluntary_ctxt_switches:") {
                    status >> waits[thread.path().filename()];
                }
            }
        }
        return waits;
    }

    const ByThread m_Before = look();
};
