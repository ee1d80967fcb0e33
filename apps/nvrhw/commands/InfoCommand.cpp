#include "commands/Commands.h"
#include "config/ConfigFileNameConst.h"
#include "config/MachineConfigurationDetail.h"
#include "foundation/Version.h"
#include "lines/BoardLines.h"
#include "platform/BoardVersion.h"
#include "platform/Diagnostics.h"
#include "print/Console.h"
#include "print/LogBook.h"
#include "print/Table.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <linux/gpio.h>
#include <map>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t LONGEST_GROUP = 5; // digits

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

Fact bankFact(int group, const Record& facts, const std::string& text, Style style = PLAIN) {
    const std::string number = std::to_string(group);
    return Fact{number, "bank " + number, facts}.says(text, style);
}

Fact describeChip(int group, const fs::path& entry) {
    const std::string name = fs::canonical(entry).filename().string();
    gpiochip_info info{};
    const int chip = open(entry.c_str(), O_RDONLY | O_CLOEXEC);
    if (chip < 0 || ioctl(chip, GPIO_GET_CHIPINFO_IOCTL, &info) != 0) {
        const std::string cause = std::strerror(errno);
        close(chip);
        return bankFact(group, {{"kind", "", "kernel"}, {"chip", "", name}, problem(cause)},
                        "kernel chip " + name + ": " + cause, BAD);
    }
    close(chip);
    const std::string label(info.label, strnlen(info.label, sizeof info.label));
    const int lines = static_cast<int>(info.lines);
    return bankFact(
        group,
        {{"kind", "", "kernel"}, {"chip", "", name}, {"label", "", label}, {"lines", "", lines}},
        "kernel chip " + name + " \"" + label + "\", " + counted(lines));
}

Fact faultyBank(int group, const std::string& cause) {
    return bankFact(group, {{"kind", "", Value()}, problem(cause)}, cause, BAD);
}

Fact describeBank(int group, const fs::path& entry) {
    const fs::file_status status = fs::status(entry);
    if (fs::is_character_file(status)) {
        return describeChip(group, entry);
    }
    if (!fs::is_directory(status)) {
        const std::string cause =
            fs::exists(status) ? "neither a directory of lines nor a GPIO chip" : "broken link";
        return faultyBank(group, cause);
    }
    const auto lines =
        static_cast<int>(std::distance(fs::directory_iterator(entry), fs::directory_iterator()));
    return bankFact(group,
                    {{"kind", "", "simulated"},
                     {"chip", "", Value()},
                     {"label", "", Value()},
                     {"lines", "", lines}},
                    "simulated, " + counted(lines));
}

// One that cannot be looked at does not hide the others.
Fact tryToDescribe(int group, const fs::path& entry) {
    try {
        return describeBank(group, entry);
    } catch (const fs::filesystem_error& error) {
        return faultyBank(group, error.code().message());
    }
}

Record describeBanks() {
    const std::string device = GlobalEnv::getInstance()->resolve(BoardLines::DEVICE);
    std::map<int, Fact> banks;
    Record record;
    try {
        for (const auto& entry : fs::directory_iterator(device)) {
            const std::string name = entry.path().filename().string();
            if (name.size() <= LONGEST_GROUP &&
                name.find_first_not_of("0123456789") == std::string::npos) {
                const int group = std::atoi(name.c_str());
                banks.emplace(group, tryToDescribe(group, entry.path()));
            }
        }
    } catch (const fs::filesystem_error& error) {
        record.push_back(problem(device + ": " + error.code().message()));
    }
    for (const auto& [group, bank] : banks) {
        record.insert(record.end() - (hasProblem(record) ? 1 : 0), bank);
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
