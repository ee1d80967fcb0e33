#pragma once

#include "board/check/Findings.h"
#include "board/documents/IniFile.h"
#include "board/documents/schema/Schema.h"

#include <map>
#include <optional>

/// Compares a document with its schema. Errors come from the conversions that the readers use.
class DocumentCheck {
public:
    /// `path` is the file's real one.
    DocumentCheck(Findings& findings, const DocumentSchema& schema, const std::string& path)
        : m_Findings(findings), m_Schema(schema), m_Path(path) {}

    /// Checks an XML document: its root, or nothing when it cannot be read.
    std::optional<XmlElement> checkXml();

    void checkIni();

private:
    /// The numbers that tell an element from its siblings, and the line it stands in.
    using Seen = std::map<std::vector<int>, int>;

    std::optional<std::string> readText();
    void checkElement(const XmlElement& element, const ElementSchema& schema);
    void checkFields(const XmlElement& element, const ElementSchema& schema);
    void checkField(const XmlElement& element, const FieldSchema& field, int line);
    void checkChildren(const XmlElement& element, const ElementSchema& schema);
    void checkOccurrences(const XmlElement& element, const ElementSchema& schema);
    void checkKey(const XmlElement& element, const ElementSchema& schema, Seen& seen);
    void checkEntry(const IniFile::Entry& entry);
    void checkExpected(const IniFile& file);
    void add(Finding::Severity severity, int line, const std::string& what);

    Findings& m_Findings;
    const DocumentSchema& m_Schema;
    const std::string m_Path;
};
