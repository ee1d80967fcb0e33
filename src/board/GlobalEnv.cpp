#include "platform/Diagnostics.h"

#include <cstdlib>

namespace {

constexpr char SOURCE[] = "GlobalEnv";

} // namespace

GlobalEnv* GlobalEnv::getInstance() {
    static GlobalEnv* const environment = new GlobalEnv; // asked until the very end of the process
    return environment;
}

GlobalEnv::GlobalEnv() : m_RootDirectory("/") {
    if (const char* root = std::getenv("NVRHW_ROOT")) {
        setRootDirectory(root);
    }
    if (const char* print = std::getenv("NVRHW_PRINT")) {
        setPrintFlag(std::string(print) == "1" ? 1 : 0);
    }
}

void GlobalEnv::setRootDirectory(const std::string& directory) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_RootDirectory = directory.empty() ? "/" : directory;
}

std::string GlobalEnv::getRootDirectory() const {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    return m_RootDirectory;
}

std::string GlobalEnv::resolve(const std::string& path) const {
    if (path.empty() || path.front() != '/') {
        return path;
    }
    std::string root = getRootDirectory();
    while (!root.empty() && root.back() == '/') {
        root.pop_back();
    }
    return root + path;
}
