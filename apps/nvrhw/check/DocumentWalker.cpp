#include "DocumentWalker.h"

#include "ElementPath.h"
#include "Suggestion.h"
#include "board/documents/ConfigError.h"
#include "platform/FixedText.h"

#include <algorithm>

namespace {

/// A name from outside, of whatever length.
std::string shown(const std::string& name) {
    FixedText<64> text;
    text.set(name.c_str());
    return text.get();
}

template <typename Rule> std::vector<std::string> namesOf(const std::vector<Rule>& rules) {
    std::vector<std::string> names;
    names.reserve(rules.size());
    for (const Rule& rule : rules) {
        names.push_back(rule.name);
    }
    return names;
}

template <typename Rule> bool knows(const std::vector<Rule>& rules, const std::string& name) {
    return std::any_of(rules.begin(), rules.end(),
                       [&](const Rule& rule) { return rule.name == name; });
}

bool isIn(int value, const XmlElement::Range& range) {
    return value >= range.lowest && value <= range.highest;
}

/// What is unlikely about a number that the reader accepts.
std::string doubtAbout(int value, const AttributeRule& rule) {
    if (isIn(value, rule.likely)) {
        return "";
    }
    return "attribute " + rule.name + " is " + std::to_string(value) +
           (value < 0 ? ", which is negative" : "");
}

/// The same for a text.
std::string doubtAbout(const std::string& value, const AttributeRule& rule) {
    if (value.empty() && rule.presence == AttributeRule::EXPECTED) {
        return "attribute " + rule.name + " is empty";
    }
    const auto most = static_cast<std::size_t>(rule.likely.highest);
    return value.size() <= most ? ""
                                : "attribute " + rule.name + " is longer than " +
                                      std::to_string(most) + " bytes and will be cut";
}

/// Converts as the reader does. Throws ConfigError when that fails; otherwise returns a doubt, or
/// an empty text.
std::string convert(const XmlElement& element, const AttributeRule& rule) {
    bool flag = false;
    int number = 0;
    std::string text;
    switch (rule.kind) {
    case AttributeRule::FLAG:
        element.read(rule.name, flag);
        return "";
    case AttributeRule::NUMBER:
        element.read(rule.name, number, rule.accepted);
        return doubtAbout(number, rule);
    case AttributeRule::CHOICE:
        element.read(rule.name, rule.choices, number);
        return "";
    case AttributeRule::TEXT:
        break;
    }
    if (rule.presence == AttributeRule::REQUIRED) {
        text = element.requireText(rule.name);
    } else {
        element.read(rule.name, text);
    }
    return doubtAbout(text, rule);
}

} // namespace

void DocumentWalker::check(const XmlElement& root, const ElementRule& rule) {
    if (root.name() != rule.name) {
        m_Findings.warn(root, "the root element should be " + rule.name);
    }
    checkElement(root, rule);
}

void DocumentWalker::checkElement(const XmlElement& element, const ElementRule& rule) {
    const int textLine = element.textLine();
    if (textLine > 0) {
        m_Findings.add({element.file(), textLine, Finding::WARNING, element.subject(),
                        "text between elements, which nothing reads"});
    }
    checkAttributes(element, rule.attributes);
    checkChildren(element, rule);
}

void DocumentWalker::checkAttributes(const XmlElement& element,
                                     const std::vector<AttributeRule>& rules) {
    const std::vector<XmlElement::Attribute> attributes = element.attributes();
    for (const AttributeRule& rule : rules) {
        const auto found = std::find_if(attributes.begin(), attributes.end(),
                                        [&](const auto& a) { return a.name == rule.name; });
        if (found != attributes.end()) {
            checkAttribute(element, rule, found->line);
        } else if (rule.presence == AttributeRule::REQUIRED) {
            m_Findings.error(element, "attribute " + rule.name + " is missing");
        } else if (rule.presence == AttributeRule::EXPECTED) {
            const char* instead = rule.kind == AttributeRule::FLAG ? "false" : "0";
            m_Findings.warn(element,
                            "attribute " + rule.name + " is missing and counts as " + instead);
        }
    }
    for (const XmlElement::Attribute& attribute : attributes) {
        if (!knows(rules, attribute.name)) {
            checkUnknown(element, attribute, rules);
        }
    }
}

void DocumentWalker::checkAttribute(const XmlElement& element, const AttributeRule& rule,
                                    int line) {
    try {
        const std::string found = convert(element, rule);
        const std::string& doubt = found.empty() ? rule.doubt : found;
        if (!doubt.empty()) {
            m_Findings.add({element.file(), line, Finding::WARNING, element.subject(), doubt});
        }
    } catch (const ConfigError& error) {
        m_Findings.add({element.file(), line, Finding::ERROR, element.subject(), error.cause()});
    }
}

void DocumentWalker::checkUnknown(const XmlElement& element, const XmlElement::Attribute& attribute,
                                  const std::vector<AttributeRule>& rules) {
    m_Findings.add({element.file(), attribute.line, Finding::WARNING, element.subject(),
                    "unknown attribute " + shown(attribute.name) +
                        Suggestion::among(namesOf(rules), attribute.name)});
}

void DocumentWalker::checkChildren(const XmlElement& element, const ElementRule& rule) {
    for (const XmlElement& child : element.children()) {
        if (!knows(rule.children, child.name())) {
            checkUnknown(child, rule);
        }
    }
    for (const ElementRule& child : rule.children) {
        checkOccurrences(element, child);
    }
}

void DocumentWalker::checkUnknown(const XmlElement& element, const ElementRule& parent) {
    std::string hint = Suggestion::among(namesOf(parent.children), element.name());
    if (hint.empty() && parent.children.size() == 1) {
        hint = "; only " + parent.children.front().name + " is read here";
    }
    m_Findings.add({element.file(), element.line(),
                    parent.isStrict ? Finding::ERROR : Finding::WARNING, parent.name,
                    "unknown element " + shown(element.name()) + hint});
}

void DocumentWalker::checkOccurrences(const XmlElement& element, const ElementRule& rule) {
    const std::vector<XmlElement> found = element.children(rule.name);
    if (found.empty() && rule.occurrence <= ElementRule::REQUIRED) {
        m_Findings.error(element, "there is no element " + rule.name);
    }
    Seen seen;
    for (const XmlElement& child : found) {
        if (rule.occurrence == ElementRule::ANY_NUMBER || &child == &found.front()) {
            checkElement(child, rule);
            checkKey(child, rule, seen);
        } else if (rule.occurrence == ElementRule::SINGLE) {
            m_Findings.error(child, "there can be only one");
        } else {
            m_Findings.warn(child, "stands already in line " +
                                       std::to_string(found.front().line()) +
                                       ", and only that one is read");
        }
    }
}

void DocumentWalker::checkKey(const XmlElement& element, const ElementRule& rule, Seen& seen) {
    std::vector<int> values;
    std::string text;
    for (const std::string& attribute : rule.key) {
        const std::optional<int> value = ElementPath::writtenNumberOf(element, attribute);
        if (!value) {
            return; // there is a finding about it
        }
        values.push_back(*value);
        text += (text.empty() ? "" : ", ") + attribute + " " + std::to_string(*value);
    }
    if (rule.key.empty()) {
        return;
    }
    const auto [first, isNew] = seen.emplace(values, element.line());
    if (!isNew) {
        m_Findings.warn(element,
                        "the same " + text + " as in line " + std::to_string(first->second));
    }
}
