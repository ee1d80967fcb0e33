#pragma once

#include "board/documents/ConfigError.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

/// The content of a text file of [sections] with "key = value" lines, "#" and ";" comments and
/// any indentation. The last of several equal keys counts.
class IniFile {
public:
    /// A "key = value" line; `section` is empty before the first section.
    struct Entry {
        int line;
        std::string section;
        std::string key;
        std::string value;
    };

    /// Key to value.
    using Section = std::map<std::string, std::string>;
    using FaultHandler = std::function<void(const ConfigError&)>;

    /// Throws ConfigError when the file cannot be read or has a line that is none of these.
    explicit IniFile(const std::string& path);

    /// The text of a file; hands over the error of each bad line, in their order, and goes on
    /// without the line.
    IniFile(const std::string& path, const std::string& text, const FaultHandler& onFault);

    /// In the order of the file.
    const std::vector<Entry>& entries() const { return m_Entries; }

    /// Empty when the file has no such section.
    Section section(const std::string& name) const;

    /// Empty when the file has no such key.
    std::string value(const std::string& section, const std::string& key) const;

private:
    std::vector<Entry> m_Entries;
};
