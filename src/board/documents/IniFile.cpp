#include "board/documents/IniFile.h"

#include "board/documents/TextFile.h"

#include <cstddef>
#include <ini.h>
#include <new>
#include <sstream>

namespace {

// The parser's line buffer also holds a carriage return, a line feed and the final zero; it would
// take the rest of a longer line for the next line.
constexpr std::size_t MAX_LINE_LENGTH = INI_MAX_LINE - 3;

constexpr char BLANKS[] = " \t\r";

int rejectUnnamed(void* /*user*/, const char* /*section*/, const char* key, const char* /*value*/) {
    return *key == '\0' ? 0 : 1;
}

/// The lines without their indentation, which the parser would take for a continuation of the
/// value before.
std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        line.erase(0, line.find_first_not_of(BLANKS));
        line.erase(line.find_last_not_of(BLANKS) + 1);
        lines.push_back(line);
    }
    return lines;
}

/// What is wrong with a line; empty when nothing is.
std::string faultOf(const std::string& line, bool isFirst) {
    if (line.size() > MAX_LINE_LENGTH) {
        return "the line is longer than " + std::to_string(MAX_LINE_LENGTH) + " bytes";
    }
    const std::string alone = (isFirst ? "" : "\n") + line; // only the first may have a BOM
    const int badLine = ini_parse_string(alone.c_str(), rejectUnnamed, nullptr);
    if (badLine < 0) {
        throw std::bad_alloc();
    }
    return badLine > 0 ? "neither [section], key = value nor comment" : "";
}

/// Hands good lines to the parser one by one and so knows which line it is at.
class LineFeeder {
public:
    LineFeeder(const std::vector<std::string>& lines, std::vector<IniFile::Entry>& entries)
        : m_Lines(lines), m_Entries(entries) {}

    void feed() {
        if (ini_parse_stream(next, this, keep, this) < 0) {
            throw std::bad_alloc();
        }
    }

private:
    static char* next(char* buffer, int size, void* stream) {
        auto& self = *static_cast<LineFeeder*>(stream);
        if (self.m_Next == self.m_Lines.size()) {
            return nullptr;
        }
        const std::string& line = self.m_Lines[self.m_Next++];
        buffer[line.copy(buffer, static_cast<std::size_t>(size) - 1)] = '\0';
        return buffer;
    }

    static int keep(void* user, const char* section, const char* key, const char* value) {
        auto& self = *static_cast<LineFeeder*>(user);
        self.m_Entries.push_back({static_cast<int>(self.m_Next), section, key, value});
        return 1;
    }

    const std::vector<std::string>& m_Lines;
    std::vector<IniFile::Entry>& m_Entries;
    std::size_t m_Next = 0;
};

} // namespace

IniFile::IniFile(const std::string& path)
    : IniFile(path, TextFile::read(path), [](const ConfigError& fault) { throw fault; }) {}

IniFile::IniFile(const std::string& path, const std::string& text, const FaultHandler& onFault) {
    std::vector<std::string> lines = linesOf(text);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string fault = faultOf(lines[i], i == 0);
        if (!fault.empty()) {
            onFault(ConfigError(path, static_cast<int>(i) + 1, fault));
            lines[i].clear();
        }
    }
    LineFeeder(lines, m_Entries).feed();
}

IniFile::Section IniFile::section(const std::string& name) const {
    Section keys;
    for (const Entry& entry : m_Entries) {
        if (entry.section == name) {
            keys[entry.key] = entry.value;
        }
    }
    return keys;
}

std::string IniFile::value(const std::string& sectionName, const std::string& key) const {
    const Section keys = section(sectionName);
    const auto found = keys.find(key);
    return found == keys.end() ? std::string() : found->second;
}
