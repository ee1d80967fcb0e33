#pragma once

#include "AbilityCheck.h"

/// Looks whether the monitor parameters fit the monitors of the ability document.
class MonitorCheck {
public:
    MonitorCheck(Findings& findings, const std::map<int, AbilityCheck::Resolutions>& monitors)
        : m_Findings(findings), m_Monitors(monitors) {}

    void check(const XmlElement& root);

private:
    void checkParam(const XmlElement& item);

    Findings& m_Findings;
    const std::map<int, AbilityCheck::Resolutions>& m_Monitors;
};
