#include "LineCheck.h"

#include "board/documents/schema/HardwareSchema.h"
#include "board/gpio/kernel/KernelChip.h"
#include "board/gpio/simulated/SimulatedBank.h"
#include "board/runtime/ErrnoText.h"

#include <fcntl.h>
#include <filesystem>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Schema = HardwareSchema;

/// Whether this process may; else errno says why not.
bool mayAccess(const std::string& path, int mode) {
    return faccessat(AT_FDCWD, path.c_str(), mode, AT_EACCESS) == 0;
}

std::string notEntered() {
    return "the directory may not be entered: " + std::generic_category().message(errno);
}

/// "1, 2 and 5"
template <typename Numbers> std::string listed(const Numbers& numbers) {
    std::string text;
    std::size_t left = numbers.size();
    for (const int number : numbers) {
        text += text.empty() ? "" : left == 1 ? " and " : ", ";
        text += std::to_string(number);
        --left;
    }
    return text;
}

} // namespace

LineCheck::LineCheck(Findings& findings, const std::string& device)
    : m_Findings(findings), m_Device(device) {
    struct stat info {};
    std::string fault;
    if (stat(device.c_str(), &info) != 0) {
        fault = std::generic_category().message(errno);
    } else if (!S_ISDIR(info.st_mode)) {
        fault = "not a directory of banks";
    } else if (!mayAccess(device, X_OK)) {
        fault = notEntered();
    } else {
        m_IsUsable = true;
        return;
    }
    m_Findings.add(Finding::ERROR, "GPIO device", {fault, device});
}

void LineCheck::check(const XmlElement& root) {
    std::map<int, Lines> banks;
    collect(root, false, banks);
    collect(root, true, banks);
    for (const auto& [group, lines] : banks) {
        checkIsAlone(lines, group);
        if (m_IsUsable) {
            checkBank(lines, group);
        }
    }
}

void LineCheck::collect(const XmlElement& root, bool areOutputs, std::map<int, Lines>& banks) {
    const ElementSchema& section = areOutputs ? Schema::OUTPUTS : Schema::INPUTS;
    for (const XmlElement& item : root.children(section.name, XmlElement::ITEM)) {
        const std::optional<int> group = item.numberIfGood(Schema::GROUP);
        const std::optional<int> bit = item.numberIfGood(Schema::BIT_POSITION);
        if (group && bit) {
            banks[*group].push_back({item, areOutputs, *bit});
        }
    }
}

void LineCheck::checkIsAlone(const Lines& lines, int group) {
    std::map<int, const Line*> seen; // by bit, the first
    for (const Line& line : lines) {
        const Line& first = *seen.emplace(line.bit, &line).first->second;
        const bool isBoth = first.isOutput != line.isOutput;
        if (&first != &line) {
            m_Findings.add(isBoth ? Finding::ERROR : Finding::WARNING, line.item.subject(),
                           {"the same group " + std::to_string(group) + ", bitPosition " +
                                std::to_string(line.bit) + " as in line " +
                                std::to_string(first.item.line()) +
                                (isBoth ? ": an input and an output on one line" : ""),
                            line.item.file(), line.item.line()});
        }
    }
}

void LineCheck::checkBank(const Lines& lines, int group) {
    const std::string bank = m_Device + "/" + std::to_string(group);
    const std::string fault = bankFault(group, bank);
    if (!fault.empty()) {
        addForAll(lines, fault);
    } else if (std::filesystem::is_directory(bank)) {
        for (const Line& line : lines) {
            checkSimulated(line, group);
        }
    } else {
        checkChip(lines, bank);
    }
}

/// Why no line of a bank can be used; empty when they can.
std::string LineCheck::bankFault(int group, const std::string& bank) const {
    struct stat info {};
    if (stat(bank.c_str(), &info) != 0) {
        return errno == ENOENT ? "the board has no bank " + std::to_string(group) + banks()
                               : errnoText(bank);
    }
    if (S_ISDIR(info.st_mode)) {
        return mayAccess(bank, X_OK) ? "" : bank + ": " + notEntered();
    }
    return S_ISCHR(info.st_mode)
               ? ""
               : bank + ": not a bank, which is a GPIO chip or a directory with one file per line";
}

/// What the board has instead, for the end of a sentence.
std::string LineCheck::banks() const {
    std::set<int> groups;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(m_Device, error)) {
        const std::string name = entry.path().filename();
        if ((entry.is_directory(error) || entry.is_character_file(error)) && name.size() < 6 &&
            name.find_first_not_of("0123456789") == std::string::npos) {
            groups.insert(std::stoi(name));
        }
    }
    return error ? "" : groups.empty() ? "; it has none" : "; it has " + listed(groups);
}

// Looking at a chip requests no line of it.
void LineCheck::checkChip(const Lines& lines, const std::string& bank) {
    Cause cause;
    std::string holder;
    const std::unique_ptr<KernelChip> chip = KernelChip::open(bank, cause);
    if (chip == nullptr) {
        addForAll(lines, cause.text());
        return;
    }
    for (const Line& line : lines) {
        if (!chip->has(line.bit, cause)) {
            m_Findings.error(line.item, cause.text());
        } else if (chip->isHeld(line.bit, holder)) {
            m_Findings.warn(line.item, bank + ": line " + std::to_string(line.bit) +
                                           " is held by \"" + holder +
                                           "\": only the recorder itself may hold it");
        }
    }
}

void LineCheck::checkSimulated(const Line& line, int group) {
    const std::string file =
        m_Device + "/" + std::to_string(group) + "/" + std::to_string(line.bit);
    GPIOReading reading{group, line.bit};
    SimulatedBank(m_Device, group).read({&reading});
    if (reading.cause) {
        m_Findings.error(line.item, "the line cannot be read: " + reading.cause.text());
    } else if (line.isOutput && !mayAccess(file, W_OK)) {
        m_Findings.error(line.item, "the line cannot be driven: " + errnoText(file));
    }
}

/// One finding in the line of the first item, which names the lines of all.
void LineCheck::addForAll(const Lines& lines, const std::string& fault) {
    std::set<int> places;
    for (const Line& line : lines) {
        places.insert(line.item.line());
    }
    m_Findings.error(lines.front().item,
                     fault + (places.size() < 2 ? "" : " (lines " + listed(places) + ")"));
}
