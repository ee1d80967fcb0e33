#include "commands/AbilitiesCommand.h"

#include "commands/AbilitySections.h"

int AbilitiesCommand::run(const Settings& settings) {
    const Abilities abilities;
    const AbilitySections sections(abilities);
    if (settings.json) {
        Console::printDocument(sections.json());
    } else {
        Console::print(sections.text(Console::hasColours()));
    }
    return 0;
}
