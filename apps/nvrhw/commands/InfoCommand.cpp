#include "commands/InfoCommand.h"

#include "commands/BoardInfo.h"
#include "platform/Diagnostics.h"
#include "print/CommandError.h"
#include "print/Console.h"
#include "print/Table.h"

#include <vector>

namespace {

void addSection(Table& table, const InfoSection& section) {
    if (section.entries.empty() && section.problem.empty()) {
        return;
    }
    table.addHeading(section.title);
    for (const InfoSection::Entry& entry : section.entries) {
        table.add({entry.label,
                   entry.value.is_string() ? entry.value.get<std::string>() : entry.value.dump()});
    }
    if (!section.problem.empty()) {
        table.add({"unreadable", {section.problem, Table::BAD}});
    }
}

Json toJson(const InfoSection& section) {
    Json object = Json::object();
    for (const InfoSection::Entry& entry : section.entries) {
        object[entry.key] = entry.value;
    }
    if (!section.problem.empty()) {
        object["problem"] = section.problem;
    }
    return object;
}

} // namespace

int InfoCommand::run(const Settings& settings) {
    const std::string root = GlobalEnv::getInstance()->getRootDirectory();
    const InfoSection machine = BoardInfo::machine();
    const InfoSection package = BoardInfo::package();
    const std::vector<InfoSection> sections{
        {"board", "Board", {{"root", "root directory", root}}, ""},
        machine,
        package,
        BoardInfo::components(),
        BoardInfo::lines(),
        BoardInfo::banks(),
        BoardInfo::versions()};

    Table table({{""}, {""}});
    Json document;
    for (const InfoSection& section : sections) {
        addSection(table, section);
        document[section.key] = toJson(section);
    }
    if (settings.json) {
        Console::printDocument(document);
    } else {
        table.print();
    }
    if (!machine.problem.empty() || !package.problem.empty()) {
        throw CommandError::ofBoard("not all could be read");
    }
    return 0;
}
