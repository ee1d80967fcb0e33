#pragma once

#include "Findings.h"

#include <optional>

/// Looks whether the parts of the ability document agree with each other, and other documents with
/// it.
class AbilityCheck {
public:
    AbilityCheck() = delete;

    /// The roots of the documents, as far as they could be read.
    static void check(Findings& findings, const XmlElement& abilities,
                      const std::optional<XmlElement>& hardware,
                      const std::optional<XmlElement>& monitors);
};
