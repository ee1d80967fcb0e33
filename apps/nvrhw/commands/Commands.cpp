#include "commands/Commands.h"

#include "commands/AbilitiesCommand.h"
#include "commands/BoardCommand.h"
#include "commands/CancelCommand.h"
#include "commands/CheckCommand.h"
#include "commands/FollowCommand.h"
#include "commands/GenerateCommand.h"
#include "commands/InfoCommand.h"
#include "commands/InputsCommand.h"
#include "commands/MonitorsCommand.h"
#include "commands/OutputsCommand.h"
#include "commands/PanelCommand.h"
#include "commands/TriggerCommand.h"
#include "commands/ValidLevelCommand.h"

Commands::Commands() {
    m_Commands.push_back(std::make_unique<InfoCommand>());
    m_Commands.push_back(std::make_unique<CheckCommand>());
    m_Commands.push_back(std::make_unique<AbilitiesCommand>());
    m_Commands.push_back(std::make_unique<MonitorsCommand>());
    m_Commands.push_back(std::make_unique<InputsCommand>());
    m_Commands.push_back(std::make_unique<OutputsCommand>());
    m_Commands.push_back(std::make_unique<FollowCommand>());
    m_Commands.push_back(std::make_unique<TriggerCommand>());
    m_Commands.push_back(std::make_unique<CancelCommand>());
    m_Commands.push_back(std::make_unique<ValidLevelCommand>());
    m_Commands.push_back(std::make_unique<PanelCommand>());
    m_Commands.push_back(std::make_unique<BoardCommand>());
    m_Commands.push_back(std::make_unique<GenerateCommand>());
}

void Commands::addTo(CLI::App& program, Settings& settings) {
    for (const auto& command : m_Commands) {
        command->addTo(program, settings);
    }
}

int Commands::run(const Settings& settings) {
    for (const auto& command : m_Commands) {
        if (command->isChosen()) {
            return command->run(settings);
        }
    }
    return 1; // not reached: the parser asks for a subcommand
}
