#pragma once

#include "ElementRule.h"
#include "Findings.h"

#include <map>

/// Compares a document with its rules. Errors come from the conversions that the readers use.
class DocumentWalker {
public:
    explicit DocumentWalker(Findings& findings) : m_Findings(findings) {}

    void check(const XmlElement& root, const ElementRule& rule);

private:
    /// The numbers that tell an element from its siblings, and the line it stands in.
    using Seen = std::map<std::vector<int>, int>;

    void checkElement(const XmlElement& element, const ElementRule& rule);
    void checkAttributes(const XmlElement& element, const std::vector<AttributeRule>& rules);
    void checkAttribute(const XmlElement& element, const AttributeRule& rule, int line);
    void checkUnknown(const XmlElement& element, const XmlElement::Attribute& attribute,
                      const std::vector<AttributeRule>& rules);
    void checkChildren(const XmlElement& element, const ElementRule& rule);
    void checkUnknown(const XmlElement& element, const ElementRule& parent);
    void checkOccurrences(const XmlElement& element, const ElementRule& rule);
    void checkKey(const XmlElement& element, const ElementRule& rule, Seen& seen);

    Findings& m_Findings;
};
