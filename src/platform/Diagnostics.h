#pragma once

#include "platform/Export.h"
#include "platform/Mutex.h"

#include <atomic>
#include <string>

/// Process-wide switches. Never destroyed; thread-safe.
class NVRHW_API GlobalEnv {
public:
    /// The first call reads the environment: NVRHW_ROOT sets the root directory, NVRHW_PRINT=1
    /// the print flag.
    static GlobalEnv* getInstance();

    GlobalEnv(const GlobalEnv&) = delete;
    GlobalEnv& operator=(const GlobalEnv&) = delete;

    /// Non-zero when trace lines are wanted on standard output.
    int getPrintFlag() const { return m_PrintFlag.load(std::memory_order_relaxed); }
    void setPrintFlag(int flag) { m_PrintFlag.store(flag, std::memory_order_relaxed); }

    /// The directory below which the board's absolute paths are looked up; "/" on a board, a
    /// folder with the same tree below it on any other machine. Set it before anything is started.
    void setRootDirectory(const std::string& directory);
    std::string getRootDirectory() const;

    /// Where a path of the board lies on this machine: an absolute path is taken below the root
    /// directory, a relative one stays relative to the working directory, an empty one stays empty.
    std::string resolve(const std::string& path) const;

private:
    GlobalEnv();
    ~GlobalEnv() = default;

    std::atomic<int> m_PrintFlag{0};
    mutable XQMutex m_Mutex;
    std::string m_RootDirectory NVRHW_GUARDED_BY(m_Mutex);
};

/// Writes one line per record to syslog and to standard error.
class NVRHW_API Logger {
public:
    /// `subject` says what the record is about, `text` the cause; `file` (base name) and `line`
    /// are the caller's position in the source. Thread-safe.
    static void writeLog(const char* subject, const char* text, const char* file, int line);
};
