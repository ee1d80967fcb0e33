#pragma once

#include "Findings.h"

#include <map>
#include <optional>
#include <set>
#include <utility>

/// Looks whether the parts of the ability document agree with each other, and other documents with
/// it. What refers to what, and what counts what, is here and nowhere else.
class AbilityCheck {
public:
    AbilityCheck(Findings& findings, const XmlElement& root);

    void check();

    /// Compares the numbers of alarm lines with a section of the hardware configuration.
    void checkAlarms(const XmlElement& hardware) const;

    /// Looks whether monitor parameters fit the monitors of the ability document.
    void checkParams(const XmlElement& monitors) const;

private:
    /// A display resolution is named by its input type and its id.
    using Resolution = std::pair<int, int>;
    using Resolutions = std::set<Resolution>;

    void readResolutions();
    void checkMonitors();
    void checkReference(const XmlElement& item, const Resolution& resolution);
    void checkLayouts();
    void checkWindows(const XmlElement& layout, int pictures);
    void checkNetwork() const;
    void checkPlayback() const;
    void checkCount(const FieldSchema& field, const XmlElement& hardware,
                    const ElementSchema& section) const;
    void checkParam(const XmlElement& item, int id) const;
    std::optional<int> number(const ElementSchema& section, const FieldSchema& field) const;
    std::string choiceOf(int type) const;

    Findings& m_Findings;
    const XmlElement m_Root;
    Resolutions m_Resolutions;
    std::map<int, Resolutions> m_Monitors; ///< the resolutions of each, by its id
};
