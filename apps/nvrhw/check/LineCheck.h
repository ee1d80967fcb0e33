#pragma once

#include "Findings.h"

#include <optional>

/// Looks at the lines that the hardware configuration names: whether each belongs to one input or
/// output, and whether the board has it. Changes nothing.
class LineCheck {
public:
    LineCheck() = delete;

    /// `device` is the GPIO device's real path, `hardware` the root of the hardware configuration.
    /// What is wrong with the device is one finding, and so is what is wrong with a bank, not one
    /// for each line.
    static void check(Findings& findings, const std::string& device,
                      const std::optional<XmlElement>& hardware);
};
