#pragma once

#include "Finding.h"
#include "board/documents/XmlElement.h"

#include <vector>

/// Collects what the checks of one board find.
class Findings {
public:
    void add(Finding finding);

    /// About an element, in the line where it begins.
    void error(const XmlElement& element, const std::string& cause);
    void warn(const XmlElement& element, const std::string& cause);

    /// By file and line; what stands in one line in the order in which it was found.
    std::vector<Finding> sorted() const;

private:
    std::vector<Finding> m_All;
};
