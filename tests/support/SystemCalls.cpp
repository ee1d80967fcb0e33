#include "support/SystemCalls.h"

#include <csignal>
#include <map>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr auto MARK = SYS_getppid; // which nothing else calls
constexpr auto OPTIONS = PTRACE_O_TRACESYSGOOD | PTRACE_O_TRACECLONE | PTRACE_O_EXITKILL;

// Several calls of one kind share a name; what waits for a lock has none.
std::string nameOf(long number) {
    static const std::map<long, std::string> NAMES = {
        {SYS_read, "read"},       {SYS_write, "write"},     {SYS_pread64, "pread"},
        {SYS_ioctl, "ioctl"},     {SYS_epoll_wait, "wait"}, {SYS_poll, "poll"},
        {SYS_openat, "open"},     {SYS_close, "close"},     {SYS_futex, ""},
#ifdef SYS_newfstatat
        {SYS_newfstatat, "stat"}, {SYS_fstat, "stat"},
#endif
        {SYS_statx, "stat"},
    };
    const auto known = NAMES.find(number);
    return known != NAMES.end() ? known->second : "call " + std::to_string(number);
}

/// What one thread has called since its last mark.
struct Thread {
    std::map<std::string, int> calls;
    bool hasMarked = false;
};

using Segments = std::vector<std::string>;

void note(Thread& thread, long number, Segments& segments) {
    if (number != MARK) {
        ++thread.calls[nameOf(number)];
        return;
    }
    std::string text;
    for (const auto& [name, count] : thread.calls) {
        if (!name.empty()) {
            text +=
                (text.empty() ? "" : " ") + name + (count > 1 ? "*" + std::to_string(count) : "");
        }
    }
    if (thread.hasMarked) {
        segments.push_back(text);
    }
    thread = {{}, true};
}

} // namespace

void SystemCalls::mark() { syscall(MARK); }

Segments SystemCalls::betweenMarks(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
            _exit(1);
        }
        raise(SIGSTOP);
        work();
        _exit(0);
    }
    Segments segments;
    std::map<pid_t, Thread> threads;
    int status = 0;
    for (pid_t stopped = waitpid(child, &status, __WALL); stopped > 0;
         stopped = waitpid(-1, &status, __WALL)) {
        if (!WIFSTOPPED(status)) {
            if (stopped == child) {
                break;
            }
            continue;
        }
        int signal = WSTOPSIG(status);
        if (threads.count(stopped) == 0) {
            ptrace(PTRACE_SETOPTIONS, stopped, nullptr, OPTIONS);
            threads[stopped] = {};
        }
        __ptrace_syscall_info info{};
        if (signal == (SIGTRAP | 0x80) &&
            ptrace(PTRACE_GET_SYSCALL_INFO, stopped, sizeof info, &info) > 0 &&
            info.op == PTRACE_SYSCALL_INFO_ENTRY) {
            note(threads[stopped], static_cast<long>(info.entry.nr), segments);
        }
        signal = signal == SIGSTOP || (signal & ~0x80) == SIGTRAP ? 0 : signal;
        ptrace(PTRACE_SYSCALL, stopped, nullptr, signal);
    }
    return segments;
}
