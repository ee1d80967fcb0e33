#include "board/IniFile.h"

#include "board/ConfigError.h"
#include "board/TextFile.h"

#include <cstddef>
#include <ini.h>
#include <new>
#include <sstream>

namespace {

// The parser's line buffer also holds a carriage return, a line feed and the final zero; it would
// take the rest of a longer line for the next line.
constexpr std::size_t MAX_LINE_LENGTH = INI_MAX_LINE - 3;

constexpr char BLANKS[] = " \t\r";

std::string position(const std::string& path, int line) {
    return path + ":" + std::to_string(line) + ": ";
}

/// The lines without their indentation, which the parser would take for a continuation of the
/// value before.
std::string withoutIndentation(const std::string& text, const std::string& path) {
    std::istringstream lines(text);
    std::string result;
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        line.erase(0, line.find_first_not_of(BLANKS));
        line.erase(line.find_last_not_of(BLANKS) + 1);
        if (line.size() > MAX_LINE_LENGTH) {
            throw ConfigError(position(path, number) + "the line is longer than " +
                              std::to_string(MAX_LINE_LENGTH) + " bytes");
        }
        result += line + "\n";
    }
    return result;
}

} // namespace

IniFile::IniFile(const std::string& path) {
    const auto keep = [](void* user, const char* section, const char* key, const char* value) {
        if (*key == '\0') {
            return 0;
        }
        static_cast<IniFile*>(user)->m_Sections[section][key] = value;
        return 1;
    };
    const std::string text = withoutIndentation(TextFile::read(path), path);
    const int badLine = ini_parse_string(text.c_str(), keep, this);
    if (badLine < 0) {
        throw std::bad_alloc();
    }
    if (badLine > 0) {
        throw ConfigError(position(path, badLine) + "neither [section], key = value nor comment");
    }
}

IniFile::Section IniFile::section(const std::string& name) const {
    const auto found = m_Sections.find(name);
    return found == m_Sections.end() ? Section() : found->second;
}

std::string IniFile::value(const std::string& sectionName, const std::string& key) const {
    const Section keys = section(sectionName);
    const auto found = keys.find(key);
    return found == keys.end() ? std::string() : found->second;
}
