#include "board/gpio/simulated/SimulatedBank.h"

#include "board/gpio/bank/GPIOLineSettingsTable.h"
#include "board/gpio/simulated/SimulatedWatch.h"
#include "board/runtime/FileDescriptor.h"
#include "platform/Cause.h"

#include <cctype>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr std::size_t LONGEST_CONTENT = 255;
constexpr std::size_t LONGEST_QUOTE = 16;
constexpr char SOURCE[] = "SimulatedBank";
constexpr std::int64_t NANOSECONDS = 1000000000;
constexpr std::int64_t MILLISECOND = 1000000; // nanoseconds

// A shell that writes a level empties the file first. Whoever reads in that moment gives it a
// little time, but only then: a file that has been empty for longer is not waited for.
constexpr std::int64_t PATIENCE = 100000000; // nanoseconds
constexpr long NAP = 500000;                 // nanoseconds
constexpr int MOST_NAPS = 200;

FileDescriptor openLine(const std::string& path, int mode, struct stat& info, Cause& cause) {
    FileDescriptor file(open(path.c_str(), mode | O_NONBLOCK | O_CLOEXEC | O_NOFOLLOW | O_NOCTTY));
    if (!file.isValid() || fstat(file.get(), &info) != 0) {
        cause = Cause::fromErrno(path);
        return FileDescriptor();
    }
    if (!S_ISREG(info.st_mode)) {
        cause = {"not a regular file", path};
        return FileDescriptor();
    }
    return file;
}

// True when the last change is less than this time, in nanoseconds, ago. A time far in the future
// is that of a clock that has been set back.
bool isYounger(const struct stat& info, std::int64_t limit) {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const std::int64_t age = (std::int64_t{now.tv_sec} - info.st_mtim.tv_sec) * NANOSECONDS +
                             now.tv_nsec - info.st_mtim.tv_nsec;
    return age >= -limit && age < limit;
}

bool isFresh(const FileDescriptor& file) {
    struct stat info {};
    return fstat(file.get(), &info) == 0 && isYounger(info, PATIENCE);
}

// False, and `cause`, on failure; `patient` asks for another try.
bool readOnce(const std::string& path, std::string& content, bool& patient, Cause& cause) {
    struct stat info {};
    const FileDescriptor file = openLine(path, O_RDONLY, info, cause);
    if (!file.isValid()) {
        return false;
    }
    content.resize(LONGEST_CONTENT + 1);
    const ssize_t size = pread(file.get(), content.data(), content.size(), 0);
    if (size < 0) {
        cause = Cause::fromErrno(path);
        return false;
    }
    content.resize(static_cast<std::size_t>(size));
    patient = content.empty() && isFresh(file);
    return true;
}

bool readContent(const std::string& path, std::string& content, Cause& cause) {
    for (int naps = 0;; ++naps) {
        bool patient = false;
        if (!readOnce(path, content, patient, cause)) {
            return false;
        }
        if (!patient || naps == MOST_NAPS) {
            return true;
        }
        const timespec nap{0, NAP};
        nanosleep(&nap, nullptr);
    }
}

bool isLevel(const std::string& content) {
    if (content.empty() || content.size() > LONGEST_CONTENT) {
        return false;
    }
    const bool blankRest = content.find_first_not_of(" \t\r\n\v\f", 1) == std::string::npos;
    return blankRest && (content.front() == '0' || content.front() == '1');
}

std::string quote(const std::string& content) {
    std::string text = content.substr(0, LONGEST_QUOTE);
    for (char& c : text) {
        c = std::isprint(static_cast<unsigned char>(c)) != 0 ? c : '?';
    }
    return '"' + text + (content.size() > LONGEST_QUOTE ? "\"..." : "\"");
}

} // namespace

SimulatedBank::SimulatedBank(const std::string& device, int group)
    : m_Device(device), m_Group(group), m_Entry(std::to_string(group)) {}

bool SimulatedBank::isCurrent(const struct stat& entry) { return S_ISDIR(entry.st_mode); }

void SimulatedBank::read(const std::vector<GPIOReading*>& readings) {
    for (GPIOReading* reading : readings) {
        const std::string path = lineFile(reading->bit);
        std::string content;
        if (!readContent(path, content, reading->cause)) {
            continue;
        }
        if (isLevel(content)) {
            reading->level = debounce(reading->bit, content.front() - '0');
        } else {
            reading->cause = {"neither 0 nor 1 but " + quote(content), path};
        }
    }
}

// The file always holds a level for other readers: one write over the old content, and only what
// is longer is cut off afterwards.
bool SimulatedBank::drive(int bit, int level, Cause& cause) {
    const std::string path = lineFile(bit);
    struct stat info {};
    const FileDescriptor file = openLine(path, O_WRONLY, info, cause);
    if (!file.isValid()) {
        return false;
    }
    const std::string content = level != 0 ? "1\n" : "0\n";
    const auto length = static_cast<off_t>(content.size());
    if (pwrite(file.get(), content.data(), content.size(), 0) <= 0 ||
        fstat(file.get(), &info) != 0 ||
        (info.st_size > length && ftruncate(file.get(), length) != 0)) {
        cause = Cause::fromErrno(path);
        return false;
    }
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_Held[bit] = level; // what we drive does not bounce
    return true;
}

bool SimulatedBank::hasHeld(const std::string& path, int time) {
    struct stat info {};
    return lstat(path.c_str(), &info) != 0 || !isYounger(info, time * MILLISECOND);
}

// The file is looked at after its content: a level that comes in between counts as young.
int SimulatedBank::debounce(int bit, int level) {
    const int time = GPIOLineSettingsTable::get(m_Group, bit).debounce;
    if (time == 0) {
        return level;
    }
    const bool held = hasHeld(lineFile(bit), time + CLOCK_TICK);
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const auto known = m_Held.insert({bit, level}).first;
    if (held) {
        known->second = level;
    }
    return known->second;
}

std::unique_ptr<GPIOBankWatch> SimulatedBank::watch(Cause& cause) {
    return SimulatedWatch::begin(m_Device, m_Group, cause);
}

std::string SimulatedBank::lineFile(int bit) const {
    return m_Device + "/" + m_Entry + "/" + std::to_string(bit);
}
