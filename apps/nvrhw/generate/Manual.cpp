#include "generate/Manual.h"

#include <CLI/CLI.hpp>
#include <sstream>

namespace {

// As roff wants it: hyphens are minus signs, no line begins with a control character.
std::string escaped(const std::string& text) {
    std::string out;
    for (const char c : text) {
        if ((c == '.' || c == '\'') && (out.empty() || out.back() == '\n')) {
            out += "\\&";
        }
        out += c == '\\' ? "\\e" : c == '-' ? "\\-" : std::string(1, c);
    }
    return out;
}

std::string synopsis(const CLI::App& app, const std::string& path) {
    std::string text = "\\fB" + escaped(path) + "\\fR [\\fIOPTIONS\\fR]";
    for (const CLI::Option* option : app.get_options()) {
        if (option->get_positional()) {
            const std::string name = "\\fI" + option->get_name(true) + "\\fR";
            text += option->get_required() ? " " + name : " [" + name + "]";
        }
    }
    return text;
}

std::string optionText(const CLI::Option& option) {
    const bool isPositional = option.get_positional();
    std::string text = ".TP\n\\fB" + escaped(option.get_name(isPositional, !isPositional)) + "\\fR";
    if (!isPositional && option.get_items_expected_max() > 0) {
        text += " " + escaped(option.get_type_name());
    }
    return text + "\n" + escaped(option.get_description()) + "\n";
}

// Blocks between empty lines; an indented line is an example and is not filled.
std::string footerText(const std::string& footer) {
    std::string text;
    std::istringstream lines(footer);
    bool isNew = true;
    for (std::string line; std::getline(lines, line); isNew = line.empty()) {
        if (line.compare(0, 2, "  ") == 0) {
            text += ".IP\n.nf\n" + escaped(line.substr(2)) + "\n.fi\n";
        } else if (!line.empty()) {
            text += (isNew ? ".PP\n" : "") + escaped(line) + "\n";
        }
    }
    return text;
}

void append(std::string& text, const CLI::App& app, const std::string& path) {
    if (app.get_require_subcommand_min() == 0) {
        text += ".SS " + synopsis(app, path) + "\n" + escaped(app.get_description()) + ".\n";
        for (const CLI::Option* option : app.get_options()) {
            const std::string name = option->get_name();
            if (name != "--help" && name != "--board" && name != "--json") { // every command has
                text += optionText(*option);
            }
        }
        text += footerText(app.get_footer());
    }
    for (const CLI::App* sub : app.get_subcommands({})) {
        if (!sub->get_group().empty()) { // not a hidden one
            append(text, *sub, path + " " + sub->get_name());
        }
    }
}

} // namespace

std::string Manual::text(const CLI::App& program) {
    std::string text = "[COMMANDS]\n";
    append(text, program, program.get_name());
    return text;
}
