#include "generate/Generated.h"

#include <CLI/CLI.hpp>

namespace {

/// Below the program's own help that of each command, under its usage.
class ManualFormatter : public CLI::Formatter {
public:
    std::string make_subcommands(const CLI::App* app, CLI::AppFormatMode mode) const override {
        return Formatter::make_subcommands(app, mode) + "\n*COMMANDS*\n" +
               commandsOf(*app, app->get_name());
    }

private:
    std::string commandsOf(const CLI::App& parent, const std::string& path) const {
        std::string text;
        for (const CLI::App* app : parent.get_subcommands({})) {
            const std::string name = path + " " + app->get_name();
            if (app->get_group().empty()) {
                continue; // hidden
            }
            if (app->get_require_subcommand_min() == 0) {
                const std::string usage = make_usage(app, name);
                text += "\n" + usage.substr(usage.find(name), usage.size() - usage.find(name) - 1) +
                        ":\n  " + app->get_description() + ".\n\n" + optionsOf(*app) + "\n" +
                        make_footer(app);
            }
            text += commandsOf(*app, name);
        }
        return text;
    }

    std::string optionsOf(const CLI::App& app) const {
        std::string text;
        for (const CLI::Option* option : app.get_options()) {
            const std::string name = option->get_name();
            if (name != "--help" && name != "--board" && name != "--json") { // every command has
                text += make_option(option, option->get_positional());
            }
        }
        return text;
    }
};

} // namespace

std::string manualText(const CLI::App& program) {
    return ManualFormatter().make_help(&program, program.get_name(), CLI::AppFormatMode::Normal);
}
