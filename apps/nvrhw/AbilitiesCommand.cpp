#include "AbilitiesCommand.h"

#include "AbilitySections.h"

int AbilitiesCommand::run(const Settings& settings) {
    const Abilities abilities;
    const AbilitySections sections(abilities);
    if (settings.json) {
        Output::printDocument(sections.json());
    } else {
        Output::print(sections.text(Output::hasColours()));
    }
    return 0;
}
