#pragma once

#include "board/documents/ConfigError.h"
#include "board/documents/XmlElement.h"
#include "platform/FixedText.h"

#include <algorithm>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

/// A fault of a board's documents or lines.
struct Finding {
    /// An error makes the library fail or misread the board; a warning is almost surely a mistake.
    enum Severity { ERROR, WARNING };

    std::string file; ///< a path that opens from here
    int line;         ///< from 1; 0 when the whole file is meant
    Severity severity;
    std::string subject;
    std::string cause;

    const char* severityName() const { return severity == ERROR ? "error" : "warning"; }

    /// "FILE:LINE: error: SUBJECT: cause", as compilers write; without LINE when that is 0.
    std::string text() const {
        const std::string place = file + (line > 0 ? ":" + std::to_string(line) : "");
        return place + ": " + severityName() + ": " + subject + ": " + cause;
    }
};

/// Collects what the checks of one board find.
class Findings {
public:
    void add(Finding::Severity severity, const std::string& subject, Cause cause) {
        const std::string file = std::exchange(cause.where, "");
        m_All.push_back({file, cause.line, severity, shortened<128>(subject), cause.text()});
    }

    /// About an element, in the line where it begins or another.
    void error(const XmlElement& element, const std::string& what) {
        add(Finding::ERROR, element.subject(), {what, element.file(), element.line()});
    }
    void warn(const XmlElement& element, const std::string& what, int line = 0) {
        add(Finding::WARNING, element.subject(),
            {what, element.file(), line > 0 ? line : element.line()});
    }

    /// By file and line; what stands in one line in the order in which it was found.
    std::vector<Finding> sorted() const {
        std::vector<Finding> findings = m_All;
        std::stable_sort(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
            return std::tie(a.file, a.line) < std::tie(b.file, b.line);
        });
        return findings;
    }

    /// A name from outside, of whatever length.
    template <std::size_t SIZE> static std::string shortened(const std::string& name) {
        FixedText<SIZE> text;
        text.set(name.c_str());
        return text.get();
    }

private:
    std::vector<Finding> m_All;
};

/// Looks whether the parts of the ability document agree with each other, and other documents with
/// it: the roots of the documents, as far as they could be read.
void checkAbilities(Findings& findings, const XmlElement& abilities,
                    const std::optional<XmlElement>& hardware,
                    const std::optional<XmlElement>& monitors);

/// Looks at the lines that the hardware configuration names: whether each belongs to one input or
/// output, and, with `areSought`, whether the GPIO device, `device` by its real path, has it.
/// Changes nothing. What is wrong with the device is one finding, and so is what is wrong with a
/// bank.
void checkLines(Findings& findings, const std::string& device,
                const std::optional<XmlElement>& hardware, bool areSought);
