#pragma once

#include "Findings.h"
#include "LineCheck.h"

#include <map>
#include <utility>

/// Looks at the lines that the hardware configuration names: whether each belongs to one input or
/// output, and whether the board has it.
class HardwareCheck {
public:
    /// `device` is the GPIO device's real path.
    HardwareCheck(Findings& findings, const std::string& device)
        : m_Findings(findings), m_Lines(findings, device) {}

    void check(const XmlElement& root);

private:
    struct Claim {
        std::string section;
        int line;
    };

    void checkSection(const XmlElement& root, const char* name, LineCheck::Use use);
    void claim(const XmlElement& item, const std::string& section, int group, int bit);

    Findings& m_Findings;
    LineCheck m_Lines;
    std::map<std::pair<int, int>, Claim> m_Claims; // by group and bit
};
