#include "board/gpio/GPIODevice.h"
#include "commands/Commands.h"
#include "config/ConfigFileNameConst.h"
#include "config/MachineConfigurationDetail.h"
#include "foundation/Version.h"
#include "platform/BoardVersion.h"
#include "platform/Diagnostics.h"
#include "print/Console.h"
#include "print/LogBook.h"
#include "print/Table.h"

#include <algorithm>

namespace {

// What is broken does not hide the rest: each section is read for itself, and has the fact
// "problem" when it cannot be.
Fact problem(const std::string& cause) {
    return Fact{"problem", "unreadable", cause}.says(cause, BAD);
}

bool hasProblem(const Record& section) {
    return std::any_of(section.begin(), section.end(),
                       [](const Fact& fact) { return fact.key == "problem"; });
}

Record describeMachine() {
    MachineConfigurationDetail detail;
    if (detail.initMachineInfo() == 0) {
        return {problem(LogBook::takeCause("cannot be read"))};
    }
    const MachineInfo& info = detail.getMachineInfo();
    return {{"manufacturer", "manufacturer", info.getManufacturer()},
            {"model", "model", info.getModel()},
            {"serialNumber", "serial number", info.getSerialNumber()},
            {"hardwareVersion", "hardware version", info.getHardwareVersion()},
            {"productionDate", "production date", info.getProductionDate()}};
}

// The package, and what it consists of.
Record describePackage(Record& components) {
    MachineConfigurationDetail detail;
    if (detail.initSoftwarePackage() == 0) {
        return {problem(LogBook::takeCause("cannot be read"))};
    }
    const SoftwarePackage& package = detail.getSoftwarePackage();
    for (const auto& [name, version] : package.getComponents()) {
        components.push_back({name, name, version});
    }
    return {{"name", "package", package.getName()},
            {"version", "version", package.getVersion()},
            {"buildDate", "built", package.getBuildDate()}};
}

int sizeOf(const SafePointer<HardwareConfigItemList>& list) {
    return static_cast<int>(list->getHardwareConfigItemList().size());
}

Record describeLines() {
    MachineConfigurationDetail detail;
    if (detail.initHardwareConfig() == 0) {
        return {problem(LogBook::takeCause("cannot be read"))};
    }
    return {{"inputs", "inputs", sizeOf(detail.getAlarmInConfigItemList())},
            {"outputs", "outputs", sizeOf(detail.getAlarmOutConfigItemList())}};
}

std::string counted(int lines) { return std::to_string(lines) + (lines == 1 ? " line" : " lines"); }

std::string textOf(const GPIODevice::Bank& bank, const std::string& fault) {
    if (bank.kind == GPIODevice::NO_BANK) {
        return fault;
    }
    const std::string label = bank.label.empty() ? "" : " \"" + bank.label + "\"";
    return GPIODevice::nameOf(bank.kind) + (bank.chip.empty() ? "" : " chip " + bank.chip + label) +
           (bank.lines < 0 ? "" : ", " + counted(bank.lines)) + (fault.empty() ? "" : ": " + fault);
}

Fact describe(const GPIODevice::Bank& bank) {
    const auto ifAny = [](const std::string& text) { return text.empty() ? Value() : Value(text); };
    Record facts{{"kind", "", ifAny(GPIODevice::nameOf(bank.kind))},
                 {"chip", "", ifAny(bank.chip)},
                 {"label", "", ifAny(bank.label)},
                 {"lines", "", bank.lines < 0 ? Value() : Value(bank.lines)}};
    Cause fault = bank.fault;
    fault.where.clear(); // the row says it
    if (fault) {
        facts.push_back(problem(fault.text()));
    }
    const std::string number = std::to_string(bank.group);
    return Fact{number, "bank " + number, facts}.says(textOf(bank, fault.text()),
                                                      fault ? BAD : PLAIN);
}

Record describeBanks() {
    Cause cause;
    Record record;
    for (const GPIODevice::Bank& bank :
         GPIODevice(GlobalEnv::getInstance()->resolve(GPIODevice::PATH)).banks(cause)) {
        record.push_back(describe(bank));
    }
    if (cause) {
        record.push_back(problem(cause.text()));
    }
    return record;
}

int run(const Settings& settings) {
    Record components;
    const Record machine = describeMachine();
    const Record package = describePackage(components);
    const Record sections{
        {"board", "Board",
         Record{{"root", "root directory", GlobalEnv::getInstance()->getRootDirectory()}}},
        {"machine", "Machine", machine},
        {"package", "Software", package},
        {"components", "Components", components},
        {"lines", "Alarm lines", describeLines()},
        {"banks", "GPIO banks", describeBanks()},
        {"versions", "Versions",
         Record{{"tool", "nvrhw", NVRHW_VERSION},
                {"library", "library", Version::text()},
                {"boardLayer", "board layer", BoardVersion::text()}}}};
    if (settings.json) {
        Console::printDocument(sections);
    } else {
        Table table;
        for (const Fact& section : sections) {
            const Record& facts = std::get<Record>(section.value);
            if (!facts.empty()) {
                table.addFacts(facts, section.title);
            }
        }
        table.print();
    }
    if (hasProblem(machine) || hasProblem(package)) {
        throw CommandError::ofBoard("not all could be read");
    }
    return 0;
}

} // namespace

void addInfo(Commands& commands) {
    commands.add("info", "Show the machine, its software, its GPIO banks and versions", run);
}
