#pragma once

#include "Findings.h"

#include <map>
#include <set>
#include <utility>

/// Looks whether the parts of the ability document agree with each other and with the hardware
/// configuration.
class AbilityCheck {
public:
    /// A display resolution is named by its input type and its id.
    using Resolution = std::pair<int, int>;
    using Resolutions = std::set<Resolution>;

    AbilityCheck(Findings& findings, const XmlElement& root);

    void check();

    /// Compares the numbers of alarm lines with a section of the hardware configuration.
    void checkAlarms(const XmlElement& hardware) const;

    /// The resolutions of each monitor, by its id.
    const std::map<int, Resolutions>& monitors() const { return m_Monitors; }

private:
    void readResolutions();
    void checkMonitors();
    void checkReference(const XmlElement& item, const Resolution& resolution);
    void checkLayouts();
    void checkWindows(const XmlElement& layout, int pictures);
    void checkNetwork() const;
    void checkPlayback() const;
    std::string choiceOf(int type) const;

    Findings& m_Findings;
    const XmlElement m_Root;
    Resolutions m_Resolutions;
    std::map<int, Resolutions> m_Monitors;
};
