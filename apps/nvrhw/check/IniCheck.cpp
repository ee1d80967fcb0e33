#include "IniCheck.h"

#include "Suggestion.h"

#include <algorithm>
#include <map>

const std::vector<SectionRule>& IniCheck::machineInfo() {
    static const std::vector<SectionRule> rules{
        {"machine",
         {"model", "serialNumber"},
         {"manufacturer", "hardwareVersion", "productionDate"}}};
    return rules;
}

const std::vector<SectionRule>& IniCheck::softwarePackage() {
    static const std::vector<SectionRule> rules{{"package", {"name", "version"}, {"buildDate"}},
                                                {"components", {}, {}, true}};
    return rules;
}

void IniCheck::check(const std::vector<SectionRule>& rules) {
    const auto onFault = [this](const ConfigError& fault) {
        add(fault.line(), Finding::ERROR, fault.cause());
    };
    try {
        const IniFile file(m_Path, onFault);
        checkEntries(file, rules);
        for (const SectionRule& rule : rules) {
            checkMissing(file, rule);
        }
    } catch (const ConfigError& fault) {
        onFault(fault);
    }
}

void IniCheck::checkEntries(const IniFile& file, const std::vector<SectionRule>& rules) {
    std::map<std::pair<std::string, std::string>, int> seen;
    std::vector<std::string> names;
    names.reserve(rules.size());
    for (const SectionRule& rule : rules) {
        names.push_back(rule.name);
    }
    for (const IniFile::Entry& entry : file.entries()) {
        const auto rule = std::find_if(rules.begin(), rules.end(), [&](const SectionRule& known) {
            return known.name == entry.section;
        });
        const auto [first, isNew] = seen.emplace(std::pair(entry.section, entry.key), entry.line);
        if (!isNew) {
            add(entry.line, Finding::WARNING,
                "key " + entry.key + " stands already in line " + std::to_string(first->second) +
                    ", and only the last counts");
        } else if (rule != rules.end()) {
            checkKey(entry, *rule);
        } else if (entry.section.empty()) {
            add(entry.line, Finding::WARNING, "key " + entry.key + " stands before any section");
        } else {
            add(entry.line, Finding::WARNING,
                "key " + entry.key + " in the unknown section " + entry.section +
                    Suggestion::among(names, entry.section));
        }
    }
}

void IniCheck::checkKey(const IniFile::Entry& entry, const SectionRule& rule) {
    std::vector<std::string> known = rule.expectedKeys;
    known.insert(known.end(), rule.otherKeys.begin(), rule.otherKeys.end());
    if (!rule.takesAnyKey && std::find(known.begin(), known.end(), entry.key) == known.end()) {
        add(entry.line, Finding::WARNING,
            "unknown key " + entry.key + Suggestion::among(known, entry.key));
    }
}

void IniCheck::checkMissing(const IniFile& file, const SectionRule& rule) {
    for (const std::string& key : rule.expectedKeys) {
        if (file.value(rule.name, key).empty()) {
            add(0, Finding::WARNING, "section " + rule.name + " has no " + key);
        }
    }
}

void IniCheck::add(int line, Finding::Severity severity, const std::string& cause) {
    m_Findings.add({m_Path, line, severity, m_Title, cause});
}
