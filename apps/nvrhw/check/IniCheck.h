#pragma once

#include "Findings.h"
#include "board/documents/IniFile.h"

/// A section of an ini file: the keys it may have, and which of them should be there.
struct SectionRule {
    std::string name;
    std::vector<std::string> expectedKeys;
    std::vector<std::string> otherKeys;
    bool takesAnyKey = false;
};

/// Looks at the sections and keys of an ini file. Only a bad line is an error: the readers take
/// what is missing as empty.
class IniCheck {
public:
    static const std::vector<SectionRule>& machineInfo();
    static const std::vector<SectionRule>& softwarePackage();

    /// `title` is what the findings call the file, `path` the real one.
    IniCheck(Findings& findings, const std::string& title, const std::string& path)
        : m_Findings(findings), m_Title(title), m_Path(path) {}

    void check(const std::vector<SectionRule>& rules);

private:
    void checkEntries(const IniFile& file, const std::vector<SectionRule>& rules);
    void checkKey(const IniFile::Entry& entry, const SectionRule& rule);
    void checkMissing(const IniFile& file, const SectionRule& rule);
    void add(int line, Finding::Severity severity, const std::string& cause);

    Findings& m_Findings;
    const std::string m_Title;
    const std::string m_Path;
};
