#pragma once

#include "Findings.h"

#include <map>
#include <vector>

/// Looks at the lines that the hardware configuration names: whether each belongs to one input or
/// output, and whether the board has it. Changes nothing.
class LineCheck {
public:
    /// `device` is the GPIO device's real path. What is wrong with it is one finding, and so is
    /// what is wrong with a bank, not one for each line.
    LineCheck(Findings& findings, const std::string& device);

    /// `root` is that of the hardware configuration.
    void check(const XmlElement& root);

private:
    struct Line {
        XmlElement item;
        bool isOutput;
        int bit;
    };
    using Lines = std::vector<Line>; ///< of one bank, in the order of the document

    static void collect(const XmlElement& root, bool areOutputs, std::map<int, Lines>& banks);
    void checkIsAlone(const Lines& lines, int group);
    void checkBank(const Lines& lines, int group);
    std::string bankFault(int group, const std::string& bank) const;
    std::string banks() const;
    void checkSimulated(const Line& line, int group);
    void checkChip(const Lines& lines, const std::string& bank);
    void addForAll(const Lines& lines, const std::string& fault);

    Findings& m_Findings;
    const std::string m_Device;
    bool m_IsUsable = false;
};
