// The tables of docs/configuration.md, from the schemas that the readers of the documents use.

#include "board/documents/schema/AbilitySchema.h"
#include "board/documents/schema/ClockSchema.h"
#include "board/documents/schema/FileSystemSchema.h"
#include "board/documents/schema/HardwareSchema.h"
#include "board/documents/schema/MachineSchema.h"
#include "board/documents/schema/MonitorSchema.h"
#include "board/documents/schema/PackageSchema.h"

#include <algorithm>
#include <iostream>
#include <map>
#include <set>
#include <vector>

namespace {

const DocumentSchema* const DOCUMENTS[] = {&HardwareSchema::DOCUMENT,   &AbilitySchema::DOCUMENT,
                                           &FileSystemSchema::DOCUMENT, &MachineSchema::DOCUMENT,
                                           &PackageSchema::DOCUMENT,    &MonitorSchema::DOCUMENT,
                                           &ClockSchema::DOCUMENT};

std::string code(const std::string& name) { return name.empty() ? "" : "`" + name + "`"; }

std::string nameOf(const DocumentSchema& document) {
    const std::string path = document.path;
    return path.substr(path.rfind('/') + 1);
}

std::string row(const std::vector<std::string>& cells) {
    std::string text = "|";
    for (const std::string& cell : cells) {
        text += cell.empty() ? "" : " ";
        text += cell + " |";
    }
    return text + "\n";
}

std::string valuesOf(const FieldSchema& field) {
    const Range range = field.accepted;
    switch (field.kind) {
    case FieldSchema::FLAG:
        return "flag";
    case FieldSchema::NUMBER:
        return range.lowest == ANY.lowest     ? "any number"
               : range.highest == ANY.highest ? std::to_string(range.lowest) + " or more"
               : range.highest == range.lowest + 1
                   ? std::to_string(range.lowest) + " or " + std::to_string(range.highest)
                   : std::to_string(range.lowest) + " to " + std::to_string(range.highest);
    case FieldSchema::TEXT:
        return field.presence == FieldSchema::REQUIRED ? "text, not empty"
               : field.likely.highest == ANY.highest
                   ? "text"
                   : "text; what is behind " + std::to_string(field.likely.highest) +
                         " bytes is cut";
    case FieldSchema::CHOICE:
        break;
    }
    std::string choices;
    for (const char* choice : field.choices) {
        choices += (choices.empty() ? "" : ", ") + code(choice);
    }
    return choices;
}

std::string withoutIt(const FieldSchema& field, const DocumentSchema& document) {
    return field.presence == FieldSchema::REQUIRED ? document.whenBad
           : field.absentText != nullptr           ? field.absentText
           : field.kind == FieldSchema::NUMBER     ? std::to_string(field.absent)
           : field.kind == FieldSchema::FLAG       ? code(field.absent != 0 ? "true" : "false")
                                                   : "empty";
}

/// Writes the rows of one document.
class DocumentTable {
public:
    explicit DocumentTable(const DocumentSchema& document) : m_Document(document) {}

    std::string text() {
        const bool isIni = std::string(m_Document.path).find(".ini") != std::string::npos;
        for (const ElementSchema& section : m_Document.root.children) {
            add(section, isIni ? "[" + std::string(section.name) + "]" : section.name);
        }
        return row({"Where", "Field", "Meaning", "Values", "When absent"}) +
               row({"---", "---", "---", "---", "---"}) + m_Rows;
    }

private:
    void add(const ElementSchema& element, const std::string& where) {
        const bool isDeep = std::count(where.begin(), where.end(), '/') > 2;
        std::string place = code(isDeep ? ".../" + ending(where) : where);
        const bool needsRow = element.meaning[0] != '\0' || element.absentText[0] != '\0';
        if (needsRow) {
            const bool isRequired = element.occurrence >= ElementSchema::REQUIRED;
            const bool isAny = element.occurrence == ElementSchema::ANY_NUMBER;
            m_Rows += row({place, element.takesAnyField ? "any" : "", element.meaning,
                           isAny ? "any number" : "",
                           isRequired ? m_Document.whenBad
                           : isAny    ? "none"
                                      : element.absentText});
            place.clear();
        }
        const auto [first, isNew] = m_Seen.emplace(namesOf(element), where);
        if (!isNew && element.fields.size() > 0) {
            m_Rows += row({place, "as " + code(first->second), "", "", ""});
        } else {
            for (const FieldSchema& field : element.fields) {
                m_Rows += row({place, code(field.name), field.meaning, valuesOf(field),
                               withoutIt(field, m_Document)});
                place.clear();
            }
        }
        for (const ElementSchema& child : element.children) {
            add(child, where + "/" + child.name);
        }
    }

    /// The last two names of a path.
    static std::string ending(const std::string& where) {
        return where.substr(where.rfind('/', where.rfind('/') - 1) + 1);
    }

    static std::set<std::string> namesOf(const ElementSchema& element) {
        std::set<std::string> names;
        for (const FieldSchema& field : element.fields) {
            names.insert(field.name);
        }
        return names;
    }

    const DocumentSchema& m_Document;
    std::string m_Rows;
    std::map<std::set<std::string>, std::string> m_Seen; // where an element with these fields is
};

std::string marked(const std::string& name, const std::string& text) {
    return "<!-- generated: " + name + " -->\n" + text + "<!-- end -->\n";
}

std::string files() {
    std::string text = row({"File", "What", "Without it"}) + row({"---", "---", "---"});
    for (const DocumentSchema* document : DOCUMENTS) {
        const std::string asked =
            document->askedPath == nullptr ? "" : code(document->askedPath) + ", else ";
        text += row({asked + code(document->path), document->meaning, document->whenMissing});
    }
    return text;
}

} // namespace

int main() {
    std::cout << marked("files", files());
    for (const DocumentSchema* document : DOCUMENTS) {
        std::cout << marked(nameOf(*document), DocumentTable(*document).text());
    }
}
