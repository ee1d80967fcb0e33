#include "MonitorCheck.h"

#include "ElementPath.h"

void MonitorCheck::check(const XmlElement& root) {
    for (const XmlElement& item : ElementPath::itemsOf(root, "Monitor")) {
        checkParam(item);
    }
}

void MonitorCheck::checkParam(const XmlElement& item) {
    const std::optional<int> id = ElementPath::writtenNumberOf(item, "monitorId");
    if (!id) {
        return;
    }
    const auto monitor = m_Monitors.find(*id);
    if (monitor == m_Monitors.end()) {
        m_Findings.warn(item, "the ability document has no monitor with monitorId " +
                                  std::to_string(*id));
        return;
    }
    const std::optional<int> type = ElementPath::numberOf(item, "type");
    const std::optional<int> resolution = ElementPath::numberOf(item, "resolutionId");
    if (type && resolution && *resolution >= 0 &&
        monitor->second.count({*type, *resolution}) == 0) {
        m_Findings.warn(item, "in the ability document, monitor " + std::to_string(*id) +
                                  " has no resolution of type " + std::to_string(*type) +
                                  " with id " + std::to_string(*resolution));
    }
}
