#include "LineCheck.h"

#include "board/gpio/kernel/KernelChip.h"
#include "board/gpio/simulated/SimulatedBank.h"
#include "board/runtime/ErrnoText.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

LineCheck::LineCheck(Findings& findings, const std::string& device)
    : m_Findings(findings), m_Device(device) {
    struct stat info {};
    const bool exists = stat(device.c_str(), &info) == 0;
    m_IsPresent = exists && S_ISDIR(info.st_mode);
    if (!m_IsPresent) {
        const std::string cause =
            exists ? "not a directory of banks" : std::generic_category().message(errno);
        m_Findings.add({device, 0, Finding::ERROR, "GPIO device", cause});
    }
}

void LineCheck::check(const XmlElement& item, int group, int bit, Use use) {
    const std::string bank = m_Device + "/" + std::to_string(group);
    struct stat info {};
    if (!m_IsPresent) {
        return;
    }
    if (stat(bank.c_str(), &info) != 0) {
        m_Findings.error(item,
                         "the board has no bank " + std::to_string(group) + ": " + errnoText(bank));
    } else if (S_ISCHR(info.st_mode)) {
        checkChip(item, bank, bit);
    } else if (S_ISDIR(info.st_mode)) {
        const std::string cause = causeOf(group, bit, use);
        if (!cause.empty()) {
            m_Findings.error(item, cause);
        }
    } else {
        m_Findings.error(
            item,
            bank + ": not a bank, which is a GPIO chip or a directory with one file per line");
    }
}

// Looking at a chip requests no line of it.
void LineCheck::checkChip(const XmlElement& item, const std::string& bank, int bit) {
    Cause cause;
    std::string holder;
    const std::unique_ptr<KernelChip> chip = KernelChip::open(bank, cause);
    if (chip == nullptr || !chip->has(bit, cause)) {
        m_Findings.error(item, cause.text());
    } else if (chip->isHeld(bit, holder)) {
        m_Findings.warn(item, bank + ": line " + std::to_string(bit) + " is held by \"" + holder +
                                  "\": only the recorder itself may hold it");
    }
}

std::string LineCheck::causeOf(int group, int bit, Use use) const {
    const std::string line = m_Device + "/" + std::to_string(group) + "/" + std::to_string(bit);
    GPIOReading reading{group, bit};
    SimulatedBank(m_Device, group).read({&reading});
    if (reading.cause) {
        return "the line cannot be read: " + reading.cause.text();
    }
    if (use == OUTPUT && faccessat(AT_FDCWD, line.c_str(), W_OK, AT_EACCESS) != 0) {
        return "the line cannot be driven: " + errnoText(line);
    }
    return "";
}
