#include "board/check/Findings.h"
#include "board/documents/schema/HardwareSchema.h"
#include "board/gpio/GPIODevice.h"
#include "board/gpio/kernel/KernelChip.h"
#include "board/gpio/simulated/SimulatedBank.h"

#include <fcntl.h>
#include <map>
#include <set>
#include <unistd.h>

namespace {

using Schema = HardwareSchema;

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

/// The lines of one device.
class DeviceLines {
public:
    DeviceLines(Findings& findings, const std::string& device)
        : m_Findings(findings), m_Device(device) {
        Cause fault = m_Device.fault();
        fault = fault ? fault : GPIODevice::notEntered(device);
        m_IsUsable = !fault;
        if (fault) {
            m_Findings.add(Finding::ERROR, "GPIO device", fault);
        }
    }

    void check(const XmlElement& root, bool areSought) {
        std::map<int, Lines> banks;
        collect(root, false, banks);
        collect(root, true, banks);
        for (const auto& [group, lines] : banks) {
            checkIsAlone(lines, group);
            if (m_IsUsable && areSought) {
                checkBank(lines, group);
            }
        }
    }

private:
    struct Line {
        XmlElement item;
        bool isOutput;
        int bit;
    };
    using Lines = std::vector<Line>; ///< of one bank, in the order of the document

    static void collect(const XmlElement& root, bool areOutputs, std::map<int, Lines>& banks) {
        const ElementSchema& section = areOutputs ? Schema::OUTPUTS : Schema::INPUTS;
        for (const XmlElement& item : root.children(section.name, XmlElement::ITEM)) {
            const std::optional<int> group = item.numberIfGood(Schema::GROUP);
            const std::optional<int> bit = item.numberIfGood(Schema::BIT_POSITION);
            if (group && bit) {
                banks[*group].push_back({item, areOutputs, *bit});
            }
        }
    }

    void checkIsAlone(const Lines& lines, int group) {
        std::map<int, const Line*> seen; // by bit, the first
        for (const Line& line : lines) {
            const Line& first = *seen.emplace(line.bit, &line).first->second;
            const std::string what = "the same group " + std::to_string(group) + ", bitPosition " +
                                     std::to_string(line.bit) + " as in line " +
                                     std::to_string(first.item.line());
            if (first.isOutput != line.isOutput) {
                m_Findings.error(line.item, what + ": an input and an output on one line");
            } else if (&first != &line) {
                m_Findings.warn(line.item, what);
            }
        }
    }

    void checkBank(const Lines& lines, int group) {
        const GPIODevice::Bank bank = m_Device.look(group);
        if (!bank.isThere && bank.fault.error == ENOENT) {
            addForAll(lines, {"the board has no bank " + std::to_string(group) + banks()});
        } else if (bank.fault) {
            addForAll(lines, bank.fault);
        } else if (bank.kind == GPIODevice::KERNEL) {
            checkChip(lines, m_Device.pathOf(group));
        } else if (bank.kind == GPIODevice::SIMULATED) {
            for (const Line& line : lines) {
                checkSimulated(line, group);
            }
        }
    }

    /// What the board has instead, for the end of a sentence.
    std::string banks() const {
        std::set<int> groups;
        Cause unknown;
        for (const GPIODevice::Bank& bank : m_Device.banks(unknown)) {
            if (bank.kind != GPIODevice::NO_BANK) {
                groups.insert(bank.group);
            }
        }
        return unknown ? "" : groups.empty() ? "; it has none" : "; it has " + listed(groups);
    }

    // Looking at a chip requests no line of it.
    void checkChip(const Lines& lines, const std::string& bank) {
        Cause cause;
        const std::unique_ptr<KernelChip> chip = KernelChip::open(bank, cause);
        if (chip == nullptr) {
            addForAll(lines, cause);
            return;
        }
        for (const Line& line : lines) {
            if (!chip->has(line.bit, cause)) {
                m_Findings.error(line.item, cause.text());
            } else if (const std::string use = chip->describeUse(line.bit); !use.empty()) {
                Cause held{"line " + std::to_string(line.bit) + " is " + use, bank};
                m_Findings.warn(line.item, held.text() + ": only the recorder itself may hold it");
            }
        }
    }

    void checkSimulated(const Line& line, int group) {
        const std::string file = m_Device.pathOf(group) + "/" + std::to_string(line.bit);
        GPIOReading reading{group, line.bit};
        SimulatedBank(m_Device.path(), group).read({&reading});
        if (reading.cause) {
            m_Findings.error(line.item, "the line cannot be read: " + reading.cause.text());
        } else if (line.isOutput && faccessat(AT_FDCWD, file.c_str(), W_OK, AT_EACCESS) != 0) {
            m_Findings.error(line.item,
                             "the line cannot be driven: " + Cause::fromErrno(file).text());
        }
    }

    /// One finding in the line of the first item, which names the lines of all.
    void addForAll(const Lines& lines, const Cause& fault) {
        std::set<int> places;
        for (const Line& line : lines) {
            places.insert(line.item.line());
        }
        m_Findings.error(lines.front().item,
                         fault.text() +
                             (places.size() < 2 ? "" : " (lines " + listed(places) + ")"));
    }

    Findings& m_Findings;
    const GPIODevice m_Device;
    bool m_IsUsable = false;
};

} // namespace

void checkLines(Findings& findings, const std::string& device,
                const std::optional<XmlElement>& hardware, bool areSought) {
    DeviceLines lines(findings, device);
    if (hardware) {
        lines.check(*hardware, areSought);
    }
}
