#include "commands/Settings.h"

#include "platform/Diagnostics.h"

void Settings::addTo(CLI::App& app) {
    app.add_option("--board", board, "The board's root directory (default: $NVRHW_ROOT or /)")
        ->check(CLI::Validator(CLI::ExistingDirectory).description(""))
        ->type_name("DIR");
    app.add_flag("--json", json, "Print JSON for programs");
}

void Settings::apply() const {
    if (!board.empty()) {
        GlobalEnv::getInstance()->setRootDirectory(board);
    }
}
