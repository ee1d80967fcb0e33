#include "board/gpio/GPIODevice.h"

#include "board/gpio/kernel/KernelChip.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

std::vector<std::string> namesIn(const std::string& directory, std::error_code& error) {
    std::vector<std::string> names;
    for (fs::directory_iterator entry(directory, error); !error && entry != end(entry);
         entry.increment(error)) {
        names.push_back(entry->path().filename().string());
    }
    return names;
}

bool isGroup(const std::string& name) {
    return name.size() <= 5 && name.find_first_not_of("0123456789") == std::string::npos &&
           (name.front() != '0' || name.size() == 1);
}

void lookAtChip(GPIODevice::Bank& bank, const std::string& path) {
    std::error_code error;
    bank.chip = fs::canonical(path, error).filename().string();
    KernelChip::look(path, bank.label, bank.lines); // for that it need not be usable
    KernelChip::open(path, bank.fault);
}

// The lines can be used by whoever may enter the directory; to count them it must be readable.
void countFiles(GPIODevice::Bank& bank, const std::string& path) {
    bank.fault = GPIODevice::notEntered(path);
    if (bank.fault) {
        return;
    }
    std::error_code error;
    const auto count = static_cast<int>(namesIn(path, error).size());
    bank.lines = error ? -1 : count;
}

} // namespace

GPIODevice::Kind GPIODevice::kindOf(const struct stat& entry) {
    return S_ISDIR(entry.st_mode) ? SIMULATED : S_ISCHR(entry.st_mode) ? KERNEL : NO_BANK;
}

const char* GPIODevice::nameOf(Kind kind) {
    switch (kind) {
    case SIMULATED:
        return "simulated";
    case KERNEL:
        return "kernel";
    case NO_BANK:
        break;
    }
    return "";
}

Cause GPIODevice::notABank(const std::string& path) {
    return {"not a bank, which is a GPIO chip or a directory with one file per line", path};
}

Cause GPIODevice::notEntered(const std::string& directory) {
    return faccessat(AT_FDCWD, directory.c_str(), X_OK, AT_EACCESS) == 0
               ? Cause{}
               : Cause::fromErrno(directory, "the directory may not be entered");
}

Cause GPIODevice::fault() const {
    struct stat info {};
    if (stat(m_Path.c_str(), &info) != 0) {
        return Cause::fromErrno(m_Path);
    }
    return S_ISDIR(info.st_mode) ? Cause{} : Cause{"not a directory of banks", m_Path};
}

GPIODevice::Bank GPIODevice::look(int group) const {
    const std::string path = pathOf(group);
    struct stat info {};
    Bank bank{group};
    bank.isThere = stat(path.c_str(), &info) == 0;
    if (!bank.isThere) {
        bank.fault = Cause::fromErrno(path);
        bank.isThere = lstat(path.c_str(), &info) == 0;
        bank.fault.what = bank.isThere && bank.fault.error == ENOENT ? "broken link" : "";
        return bank;
    }
    bank.kind = kindOf(info);
    switch (bank.kind) {
    case KERNEL:
        lookAtChip(bank, path);
        break;
    case SIMULATED:
        countFiles(bank, path);
        break;
    case NO_BANK:
        bank.fault = notABank(path);
    }
    return bank;
}

std::vector<GPIODevice::Bank> GPIODevice::banks(Cause& cause) const {
    std::vector<Bank> banks;
    std::error_code error;
    for (const std::string& name : namesIn(m_Path, error)) {
        if (isGroup(name)) {
            banks.push_back(look(std::stoi(name)));
        }
    }
    if (error) {
        cause = {"", m_Path, 0, error.value()};
    }
    std::sort(banks.begin(), banks.end(),
              [](const Bank& a, const Bank& b) { return a.group < b.group; });
    return banks;
}
