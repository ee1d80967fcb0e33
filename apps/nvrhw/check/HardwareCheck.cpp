#include "HardwareCheck.h"

#include "DocumentRules.h"
#include "ElementPath.h"

void HardwareCheck::check(const XmlElement& root) {
    checkSection(root, "GPIOAlarmIn", LineCheck::INPUT);
    checkSection(root, "GPIOAlarmOut", LineCheck::OUTPUT);
}

void HardwareCheck::checkSection(const XmlElement& root, const char* name, LineCheck::Use use) {
    for (const XmlElement& item : ElementPath::itemsOf(root, name)) {
        const std::optional<int> group =
            ElementPath::writtenNumberOf(item, "group", DocumentRules::GROUPS);
        const std::optional<int> bit =
            ElementPath::writtenNumberOf(item, "bitPosition", DocumentRules::BIT_POSITIONS);
        if (group && bit) {
            claim(item, name, *group, *bit);
            m_Lines.check(item, *group, *bit, use);
        }
    }
}

void HardwareCheck::claim(const XmlElement& item, const std::string& section, int group, int bit) {
    const auto [first, isNew] =
        m_Claims.emplace(std::make_pair(group, bit), Claim{section, item.line()});
    if (!isNew) {
        m_Findings.warn(
            item,
            "the same group " + std::to_string(group) + ", bitPosition " + std::to_string(bit) +
                " as in line " + std::to_string(first->second.line) +
                (first->second.section == section ? "" : ": an input and an output on one line"));
    }
}
