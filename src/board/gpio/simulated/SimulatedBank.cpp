#include "board/gpio/simulated/SimulatedBank.h"

#include "board/gpio/bank/GPIOLineSettingsTable.h"
#include "board/gpio/simulated/SimulatedWatch.h"
#include "platform/Cause.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <string_view>
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

// True when the last change is less than this time, in nanoseconds, ago. A time far in the future
// is that of a clock that has been set back.
bool isYounger(const struct stat& info, std::int64_t limit) {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const std::int64_t age = (std::int64_t{now.tv_sec} - info.st_mtim.tv_sec) * NANOSECONDS +
                             now.tv_nsec - info.st_mtim.tv_nsec;
    return age >= -limit && age < limit;
}

bool isLevel(std::string_view content) {
    if (content.empty() || content.size() > LONGEST_CONTENT) {
        return false;
    }
    const bool blankRest = content.find_first_not_of(" \t\r\n\v\f", 1) == content.npos;
    return blankRest && (content.front() == '0' || content.front() == '1');
}

std::string quote(std::string_view content) {
    std::string text(content.substr(0, LONGEST_QUOTE));
    for (char& c : text) {
        c = std::isprint(static_cast<unsigned char>(c)) != 0 ? c : '?';
    }
    return '"' + text + (content.size() > LONGEST_QUOTE ? "\"..." : "\"");
}

} // namespace

/// What a line's file holds.
struct SimulatedBank::Content {
    char bytes[LONGEST_CONTENT + 1];
    std::size_t size = 0;

    std::string_view text() const { return {bytes, size}; }
};

SimulatedBank::SimulatedBank(const std::string& device, int group)
    : m_Device(device), m_Group(group), m_Entry(std::to_string(group)),
      m_Directory(open((device + "/" + m_Entry).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {}

bool SimulatedBank::isCurrent(const struct stat& entry) {
    struct stat mine {};
    return fstat(m_Directory.get(), &mine) == 0 && mine.st_ino == entry.st_ino &&
           mine.st_dev == entry.st_dev;
}

void SimulatedBank::read(const std::vector<GPIOReading*>& readings) {
    for (GPIOReading* reading : readings) {
        Content content;
        if (!readLine(reading->bit, content, reading->cause)) {
            continue;
        }
        if (isLevel(content.text())) {
            reading->level = debounce(reading->bit, content.bytes[0] - '0');
        } else {
            reading->cause = {"neither 0 nor 1 but " + quote(content.text()),
                              lineFile(reading->bit)};
        }
    }
}

FileDescriptor SimulatedBank::openLine(int bit, int mode, Cause& cause) const {
    char name[16]{}; // more than any number has
    std::to_chars(name, name + sizeof name - 1, bit);
    FileDescriptor file(
        openat(m_Directory.get(), name, mode | O_NONBLOCK | O_CLOEXEC | O_NOFOLLOW | O_NOCTTY));
    if (!file.isValid()) {
        cause = Cause::fromErrno(lineFile(bit));
    }
    return file;
}

// A file that holds a level is asked for no more: whatever else could be at its place holds none.
bool SimulatedBank::readLine(int bit, Content& content, Cause& cause) const {
    for (int naps = 0;; ++naps) {
        const FileDescriptor file = openLine(bit, O_RDONLY, cause);
        if (!file.isValid()) {
            return false;
        }
        const ssize_t size = pread(file.get(), content.bytes, sizeof content.bytes, 0);
        content.size = static_cast<std::size_t>(std::max<ssize_t>(size, 0));
        if (isLevel(content.text())) {
            return true;
        }
        cause = size < 0 ? Cause::fromErrno(lineFile(bit)) : Cause();
        struct stat info {};
        if (fstat(file.get(), &info) == 0 && !S_ISREG(info.st_mode)) {
            cause = notAFile(bit);
        }
        const bool isFresh = content.size == 0 && isYounger(info, PATIENCE);
        if (cause || !isFresh || naps == MOST_NAPS) {
            return !cause;
        }
        const timespec nap{0, NAP};
        nanosleep(&nap, nullptr);
    }
}

// The file always holds a level for other readers: one write over the old content, and only what
// is longer is cut off afterwards.
bool SimulatedBank::drive(int bit, int level, Cause& cause) {
    const FileDescriptor file = openLine(bit, O_WRONLY, cause);
    struct stat info {};
    if (!file.isValid()) {
        return false;
    }
    if (fstat(file.get(), &info) == 0 && !S_ISREG(info.st_mode)) {
        cause = notAFile(bit);
        return false;
    }
    const std::string_view content = level != 0 ? "1\n" : "0\n";
    const auto length = static_cast<off_t>(content.size());
    if (pwrite(file.get(), content.data(), content.size(), 0) <= 0 ||
        fstat(file.get(), &info) != 0 ||
        (info.st_size > length && ftruncate(file.get(), length) != 0)) {
        cause = Cause::fromErrno(lineFile(bit));
        return false;
    }
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_Held[bit] = level; // what we drive does not bounce
    return true;
}

Cause SimulatedBank::notAFile(int bit) const { return {"not a regular file", lineFile(bit)}; }

bool SimulatedBank::hasHeld(const std::string& path, int time) {
    struct stat info {};
    return lstat(path.c_str(), &info) != 0 || !isYounger(info, time * MILLISECOND);
}

// The file is looked at after its content: a level that comes in between counts as young.
int SimulatedBank::debounce(int bit, int level) {
    const int time = GPIOLineSettingsTable::debounceOf(m_Group, bit);
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
