#include "board/check/BoardCheck.h"
#include "commands/Commands.h"
#include "print/Console.h"
#include "print/Text.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace {

std::string counted(std::ptrdiff_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

Record describe(const Finding& finding) {
    return {{"file", "", finding.file},
            {"line", "", finding.line > 0 ? Value(finding.line) : Value()},
            {"severity", "", finding.severityName()},
            {"subject", "", finding.subject},
            {"cause", "", finding.cause}};
}

int run(bool isStrict, const Settings& settings) {
    const std::vector<Finding> findings = BoardCheck::run();
    const auto errors = std::count_if(findings.begin(), findings.end(), [](const Finding& finding) {
        return finding.severity == Finding::ERROR;
    });
    const auto warnings = static_cast<std::ptrdiff_t>(findings.size()) - errors;
    std::vector<Record> records;
    std::string text; // as compilers write it: never cut
    for (const Finding& finding : findings) {
        records.push_back(describe(finding));
        text += Text::harmless(finding.text()) + "\n";
    }
    if (settings.json) {
        Console::printDocument(records);
    } else {
        Console::print(text + counted(errors, "error") + ", " + counted(warnings, "warning") +
                       "\n");
    }
    return errors > 0 || (isStrict && warnings > 0) ? 1 : 0;
}

} // namespace

void addCheck(Commands& commands) {
    const auto isStrict = std::make_shared<bool>(false);
    CLI::App& app =
        commands.add("check", "Find every fault of the board's documents and lines",
                     [isStrict](const Settings& settings) { return run(*isStrict, settings); });
    app.add_flag("--strict", *isStrict, "Fail on warnings, too");
    app.footer(
        "Each fault is a line as compilers write it, so that editors jump to it:\n\n"
        "  FILE:LINE: error|warning: SUBJECT: cause\n\n"
        "An error makes the library fail, lose a value or drive a wrong line; a warning is almost\n"
        "surely a mistake. Nothing is started or driven. Errors end it with status 1.");
}
