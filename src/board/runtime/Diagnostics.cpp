#include "platform/Diagnostics.h"

#include "platform/base/Mutex.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <syslog.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr char SOURCE[] = "Diagnostics";

struct SinkHolder {
    std::mutex mutex;
    std::shared_ptr<const Logger::Sink> sink;
};

SinkHolder& holder() {
    static SinkHolder* const instance = new SinkHolder; // records are written until the very end
    return *instance;
}

std::shared_ptr<const Logger::Sink> currentSink() {
    SinkHolder& kept = holder();
    const std::lock_guard<std::mutex> guard(kept.mutex); // an XQMutex would log
    return kept.sink;
}

void writeLine(const char* subject, const char* text, const char* file, int line) {
    std::string record = "nvrhw: " + std::string(subject) + ": " + text + " (" + file + ":" +
                         std::to_string(line) + ")";
    std::replace_if(
        record.begin(), record.end(), [](unsigned char c) { return c < ' '; }, ' ');
    syslog(LOG_USER | LOG_ERR, "%s", record.c_str());

    // One call, so that lines of several threads and processes do not mix.
    const std::string out = record + "\n";
    std::size_t written = 0;
    while (written < out.size()) {
        const ssize_t count = write(STDERR_FILENO, out.data() + written, out.size() - written);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            break;
        }
        written += static_cast<std::size_t>(count);
    }
}

} // namespace

void Logger::writeLog(const char* subject, const char* text, const char* file, int line) {
    if (const auto sink = currentSink()) {
        (*sink)({subject, text, file, line});
    } else {
        writeLine(subject, text, file, line);
    }
}

void Logger::setSink(Sink sink) {
    std::shared_ptr<const Sink> next;
    if (sink) {
        next = std::make_shared<const Sink>(std::move(sink));
    }
    SinkHolder& kept = holder();
    const std::lock_guard<std::mutex> guard(kept.mutex);
    kept.sink.swap(next); // the old one goes after the lock
}

struct GlobalEnv::Impl {
    std::atomic<int> printFlag{0};
    XQMutex mutex;
    std::string rootDirectory NVRHW_GUARDED_BY(mutex) = "/";
};

GlobalEnv* GlobalEnv::getInstance() {
    static GlobalEnv* const environment = new GlobalEnv; // asked until the very end of the process
    return environment;
}

GlobalEnv::GlobalEnv() : m_Impl(new Impl) {
    if (const char* root = std::getenv("NVRHW_ROOT")) {
        setRootDirectory(root);
    }
    if (const char* print = std::getenv("NVRHW_PRINT")) {
        setPrintFlag(std::string(print) == "1" ? 1 : 0);
    }
}

GlobalEnv::~GlobalEnv() = default;

int GlobalEnv::getPrintFlag() const { return m_Impl->printFlag.load(std::memory_order_relaxed); }

void GlobalEnv::setPrintFlag(int flag) { m_Impl->printFlag.store(flag, std::memory_order_relaxed); }

void GlobalEnv::setRootDirectory(const std::string& directory) {
    const XQMutexManager guard(m_Impl->mutex, SOURCE, __LINE__);
    m_Impl->rootDirectory = directory.empty() ? "/" : directory;
}

std::string GlobalEnv::getRootDirectory() const {
    const XQMutexManager guard(m_Impl->mutex, SOURCE, __LINE__);
    return m_Impl->rootDirectory;
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
