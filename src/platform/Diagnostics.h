#pragma once

#include "platform/base/Export.h"

#include <functional>
#include <memory>
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
    int getPrintFlag() const;
    void setPrintFlag(int flag);

    /// The directory below which the board's absolute paths are looked up; "/" on a board, a
    /// folder with the same tree below it on any other machine. Set it before anything is started.
    void setRootDirectory(const std::string& directory);
    std::string getRootDirectory() const;

    /// Where a path of the board lies on this machine: an absolute path is taken below the root
    /// directory, a relative one stays relative to the working directory, an empty one stays empty.
    std::string resolve(const std::string& path) const;

private:
    GlobalEnv();
    ~GlobalEnv();

    struct Impl;
    std::unique_ptr<Impl> m_Impl;
};

/// What a log record says; the texts live only for the call that hands it over.
struct NVRHW_API LogRecord {
    const char* subject; ///< what the record is about
    const char* text;    ///< the cause
    const char* file;    ///< the writer's place in the source: base name ...
    int line;            ///< ... and line
};

/// Writes one line per record to syslog and to standard error, or hands the records to the
/// application. Thread-safe.
class NVRHW_API Logger {
public:
    /// Takes the records of all threads.
    using Sink = std::function<void(const LogRecord&)>;

    /// `subject` says what the record is about, `text` the cause; `file` (base name) and `line`
    /// are the caller's position in the source.
    static void writeLog(const char* subject, const char* text, const char* file, int line);

    /// From now on the records go to `sink` alone; an empty one brings back syslog and standard
    /// error. It is called by whichever thread writes, by several at once and with locks of the
    /// library held: it must not call the library, except for writeLog(), nor raise. A call in
    /// progress may end after setSink() has returned; the sink is destroyed after its last call.
    static void setSink(Sink sink);
};
