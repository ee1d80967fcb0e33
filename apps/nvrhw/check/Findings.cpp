#include "Findings.h"

#include "platform/FixedText.h"

#include <algorithm>
#include <tuple>

namespace {

/// A name from outside, of whatever length.
std::string shortened(const std::string& name) {
    FixedText<128> text;
    text.set(name.c_str());
    return text.get();
}

} // namespace

void Findings::add(Finding finding) {
    finding.subject = shortened(finding.subject);
    m_All.push_back(std::move(finding));
}

void Findings::error(const XmlElement& element, const std::string& cause) {
    add({element.file(), element.line(), Finding::ERROR, element.subject(), cause});
}

void Findings::warn(const XmlElement& element, const std::string& cause) {
    add({element.file(), element.line(), Finding::WARNING, element.subject(), cause});
}

std::vector<Finding> Findings::sorted() const {
    std::vector<Finding> findings = m_All;
    std::stable_sort(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
        return std::tie(a.file, a.line) < std::tie(b.file, b.line);
    });
    return findings;
}
