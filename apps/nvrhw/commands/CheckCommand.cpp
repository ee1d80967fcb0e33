#include "commands/CheckCommand.h"

#include "check/BoardCheck.h"
#include "print/Console.h"

#include <algorithm>

namespace {

std::string counted(std::ptrdiff_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

Json toJson(const Finding& finding) {
    return {{"file", finding.file},
            {"line", finding.line > 0 ? Json(finding.line) : Json()},
            {"severity", finding.severityName()},
            {"subject", finding.subject},
            {"cause", finding.cause}};
}

} // namespace

void CheckCommand::setUp(CLI::App& app, Settings& /*settings*/) {
    app.add_flag("--strict", m_IsStrict, "Fail on warnings, too");
    app.footer(
        "Each fault is a line as compilers write it, so that editors jump to it:\n\n"
        "  FILE:LINE: error|warning: SUBJECT: cause\n\n"
        "An error makes the library fail, lose a value or drive a wrong line; a warning is almost\n"
        "surely a mistake. Nothing is started or driven. Errors end it with status 1.");
}

int CheckCommand::run(const Settings& settings) {
    const std::vector<Finding> findings = BoardCheck::run();
    const auto errors = std::count_if(findings.begin(), findings.end(), [](const Finding& finding) {
        return finding.severity == Finding::ERROR;
    });
    const auto warnings = static_cast<std::ptrdiff_t>(findings.size()) - errors;
    if (settings.json) {
        Json list = Json::array();
        for (const Finding& finding : findings) {
            list.push_back(toJson(finding));
        }
        Console::printDocument(list);
    } else {
        std::string text;
        for (const Finding& finding : findings) {
            text += Console::harmless(finding.text()) + "\n";
        }
        Console::print(text + counted(errors, "error") + ", " + counted(warnings, "warning") +
                       "\n");
    }
    return errors > 0 || (m_IsStrict && warnings > 0) ? 1 : 0;
}
