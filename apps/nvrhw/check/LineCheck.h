#pragma once

#include "Findings.h"

/// Looks whether the board has the lines of its configuration, and changes nothing.
class LineCheck {
public:
    enum Use { INPUT, OUTPUT };

    /// `device` is the GPIO device's real path. That it is missing is one finding, not one for each
    /// line.
    LineCheck(Findings& findings, const std::string& device);

    /// The line that an item of the configuration names; it is at its bank, and has a level.
    void check(const XmlElement& item, int group, int bit, Use use);

private:
    /// Why the line of a simulated bank cannot be used; empty when it can.
    std::string causeOf(int group, int bit, Use use) const;

    void checkChip(const XmlElement& item, const std::string& bank, int bit);

    Findings& m_Findings;
    const std::string m_Device;
    bool m_IsPresent;
};
