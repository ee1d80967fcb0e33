#include "board/check/DocumentCheck.h"

#include "board/check/Suggestion.h"
#include "board/documents/TextFile.h"

namespace {

template <typename Schema> std::vector<std::string> namesOf(const Rows<Schema>& schemas) {
    std::vector<std::string> names;
    for (const Schema& schema : schemas) {
        names.emplace_back(schema.name);
    }
    return names;
}

bool knows(const Rows<FieldSchema>& fields, const std::string& name) {
    return std::any_of(fields.begin(), fields.end(),
                       [&](const FieldSchema& field) { return field.name == name; });
}

/// ": unknown attribute NAME", with what may have been meant.
template <typename Schema>
std::string unknown(const char* kind, const Rows<Schema>& schemas, const std::string& name) {
    return std::string("unknown ") + kind + " " + Findings::shortened<64>(name) +
           suggestion(namesOf(schemas), name);
}

/// Converts as the readers do: throws ConfigError where they do; otherwise returns what is doubtful
/// about the value, or an empty text.
std::string doubtAbout(const XmlElement& element, const FieldSchema& field) {
    const std::string subject = std::string("attribute ") + field.name;
    if (field.kind == FieldSchema::NUMBER) {
        const int value = element.number(field);
        const char* sign = value < 0 ? ", which is negative" : "";
        return field.likely.has(value) ? "" : subject + " is " + std::to_string(value) + sign;
    }
    if (field.kind == FieldSchema::TEXT) {
        const auto most = static_cast<std::size_t>(field.likely.highest);
        return element.text(field).size() <= most
                   ? ""
                   : subject + " is longer than " + std::to_string(most) + " bytes and will be cut";
    }
    field.kind == FieldSchema::FLAG ? static_cast<int>(element.flag(field)) : element.choice(field);
    return "";
}

} // namespace

void DocumentCheck::add(Finding::Severity severity, int line, const std::string& what) {
    m_Findings.add(severity, m_Schema.title, {what, m_Path, line});
}

/// Nothing, and a finding, when there is no text to check.
std::optional<std::string> DocumentCheck::readText() {
    std::string text;
    if (!m_Schema.mayBeMissing) {
        text = TextFile::read(m_Path);
    } else if (!TextFile::readIfPresent(m_Path, text)) {
        const std::string first = m_Schema.askedPath == nullptr
                                      ? ""
                                      : std::string("where there is no ") + m_Schema.askedPath +
                                            " from the recorder's working directory either, ";
        add(Finding::WARNING, 0, "no such file: " + first + m_Schema.whenMissing);
        return std::nullopt;
    }
    const int line = TextFile::lineNotUtf8(text);
    if (line > 0) {
        add(Finding::WARNING, line, "bytes that are not UTF-8, here first");
    }
    return text;
}

std::optional<XmlElement> DocumentCheck::checkXml() {
    try {
        const std::optional<std::string> text = readText();
        if (!text) {
            return std::nullopt;
        }
        const auto document = std::make_shared<XmlDocument>(m_Path, *text);
        if (document->doctypeLine() > 0) {
            add(Finding::WARNING, document->doctypeLine(),
                "the document type and its entities are ignored");
        }
        const XmlElement root(document);
        const ElementSchema& whole = m_Schema.root;
        const bool isAlone = m_Schema.mayStandAlone && whole.child(root.name()) != nullptr;
        const ElementSchema& schema = isAlone ? *whole.child(root.name()) : whole;
        if (root.name() != schema.name) {
            m_Findings.warn(root, std::string("the root element should be ") + schema.name);
        }
        checkElement(root, schema);
        return root;
    } catch (const ConfigError& error) {
        m_Findings.add(Finding::ERROR, m_Schema.title, error.cause());
        return std::nullopt;
    }
}

void DocumentCheck::checkElement(const XmlElement& element, const ElementSchema& schema) {
    const int textLine = element.textLine();
    if (textLine > 0) {
        m_Findings.warn(element, "text between elements, which nothing reads", textLine);
    }
    checkFields(element, schema);
    checkChildren(element, schema);
}

void DocumentCheck::checkFields(const XmlElement& element, const ElementSchema& schema) {
    const std::vector<XmlElement::Attribute> attributes = element.attributes();
    for (const FieldSchema& field : schema.fields) {
        const auto found = std::find_if(attributes.begin(), attributes.end(),
                                        [&](const auto& a) { return a.name == field.name; });
        if (found != attributes.end() || field.presence == FieldSchema::REQUIRED) {
            checkField(element, field, found != attributes.end() ? found->line : 0);
        } else if (field.presence == FieldSchema::EXPECTED) {
            const char* instead = field.kind == FieldSchema::FLAG ? "false" : "0";
            m_Findings.warn(element, std::string("attribute ") + field.name +
                                         " is missing and counts as " + instead);
        }
    }
    for (const XmlElement::Attribute& attribute : attributes) {
        if (!knows(schema.fields, attribute.name)) {
            m_Findings.warn(element, unknown("attribute", schema.fields, attribute.name),
                            attribute.line);
        }
    }
}

void DocumentCheck::checkField(const XmlElement& element, const FieldSchema& field, int line) {
    try {
        std::string doubt = doubtAbout(element, field);
        if (doubt.empty() && field.doubt != nullptr) {
            doubt = field.doubt;
        }
        if (!doubt.empty()) {
            m_Findings.warn(element, doubt, line);
        }
    } catch (const ConfigError& error) {
        m_Findings.add(Finding::ERROR, error.subject(), error.cause());
    }
}

void DocumentCheck::checkChildren(const XmlElement& element, const ElementSchema& schema) {
    for (const XmlElement& child : element.children()) {
        if (schema.child(child.name()) != nullptr) {
            continue;
        }
        std::string what = unknown("element", schema.children, child.name());
        if (what.back() != '?' && schema.children.size() == 1) {
            what += std::string("; only ") + schema.children.begin()->name + " is read here";
        }
        m_Findings.add(schema.isStrict ? Finding::ERROR : Finding::WARNING, schema.name,
                       {what, child.file(), child.line()});
    }
    for (const ElementSchema& child : schema.children) {
        checkOccurrences(element, child);
    }
}

void DocumentCheck::checkOccurrences(const XmlElement& element, const ElementSchema& schema) {
    const ElementSchema::Occurrence occurrence = schema.occurrence;
    const std::vector<XmlElement> found = element.children(schema.name);
    if (found.empty() &&
        (occurrence == ElementSchema::REQUIRED || occurrence == ElementSchema::SINGLE)) {
        m_Findings.error(element, std::string("there is no element ") + schema.name);
    }
    Seen seen;
    for (const XmlElement& child : found) {
        if (occurrence == ElementSchema::ANY_NUMBER || &child == &found.front()) {
            checkElement(child, schema);
            checkKey(child, schema, seen);
        } else if (occurrence == ElementSchema::SINGLE) {
            m_Findings.error(child, "there can be only one");
        } else {
            m_Findings.warn(child, "stands already in line " +
                                       std::to_string(found.front().line()) +
                                       ", and only that one is read");
        }
    }
}

void DocumentCheck::checkKey(const XmlElement& element, const ElementSchema& schema, Seen& seen) {
    std::vector<int> values;
    std::string text;
    for (const FieldSchema& field : schema.fields) {
        if (!field.isKey) {
            continue;
        }
        const std::optional<int> value = element.numberIfGood(field.required());
        if (!value) {
            return; // there is a finding about it
        }
        values.push_back(*value);
        text += (text.empty() ? "" : ", ") + std::string(field.name) + " " + std::to_string(*value);
    }
    const auto [first, isNew] = seen.emplace(values, element.line());
    if (!isNew && !values.empty()) {
        m_Findings.warn(element,
                        "the same " + text + " as in line " + std::to_string(first->second));
    }
}

void DocumentCheck::checkIni() {
    const auto onFault = [this](const ConfigError& fault) {
        m_Findings.add(Finding::ERROR, m_Schema.title, fault.cause());
    };
    try {
        const IniFile file(m_Path, readText().value_or(""), onFault);
        std::map<std::pair<std::string, std::string>, int> seen;
        for (const IniFile::Entry& entry : file.entries()) {
            const auto [first, isNew] =
                seen.emplace(std::pair(entry.section, entry.key), entry.line);
            if (isNew) {
                checkEntry(entry);
            } else {
                add(Finding::WARNING, entry.line,
                    "key " + entry.key + " stands already in line " +
                        std::to_string(first->second) + ", and only the last counts");
            }
        }
        checkExpected(file);
    } catch (const ConfigError& fault) {
        onFault(fault);
    }
}

void DocumentCheck::checkEntry(const IniFile::Entry& entry) {
    const ElementSchema* section = m_Schema.root.child(entry.section);
    if (section != nullptr) {
        if (!section->takesAnyField && !knows(section->fields, entry.key)) {
            add(Finding::WARNING, entry.line, unknown("key", section->fields, entry.key));
        }
    } else if (entry.section.empty()) {
        add(Finding::WARNING, entry.line, "key " + entry.key + " stands before any section");
    } else {
        add(Finding::WARNING, entry.line,
            "key " + entry.key + " in the " +
                unknown("section", m_Schema.root.children, entry.section));
    }
}

void DocumentCheck::checkExpected(const IniFile& file) {
    for (const ElementSchema& section : m_Schema.root.children) {
        for (const FieldSchema& key : section.fields) {
            if (key.presence != FieldSchema::OPTIONAL &&
                file.value(section.name, key.name).empty()) {
                add(Finding::WARNING, 0,
                    std::string("section ") + section.name + " has no " + key.name);
            }
        }
    }
}
