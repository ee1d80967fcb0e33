#pragma once

#include <map>
#include <string>

/// The content of a text file of [sections] with "key = value" lines, "#" and ";" comments and
/// any indentation. The last of several equal keys counts.
class IniFile {
public:
    /// Key to value.
    using Section = std::map<std::string, std::string>;

    /// Throws ConfigError when the file cannot be read or has a line that is none of these.
    explicit IniFile(const std::string& path);

    /// Empty when the file has no such section.
    Section section(const std::string& name) const;

    /// Empty when the file has no such key.
    std::string value(const std::string& section, const std::string& key) const;

private:
    std::map<std::string, Section> m_Sections;
};
