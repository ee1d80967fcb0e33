#pragma once

#include "ElementRule.h"
#include "Findings.h"

#include <optional>

/// Reads all documents of the board below the root directory, and its lines; starts nothing and
/// changes nothing.
///
/// Without an error among the findings, HardwareServiceFactory::start() loads the board and all its
/// lines can be read; with one, it ends the process, raises or logs.
class BoardCheck {
public:
    /// Everything that was found, by file and line.
    static std::vector<Finding> run();

private:
    BoardCheck() = default;

    /// Checks an XML document by its rules: its root, or nothing when it cannot be read. A missing
    /// one is a warning with the text `whenMissing`, or without that an error.
    std::optional<XmlElement> walk(const char* title, const std::string& path,
                                   const ElementRule& rule, const char* whenMissing = nullptr);
    void checkDocuments();

    Findings m_Findings;
};
