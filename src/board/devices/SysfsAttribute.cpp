#include "board/devices/SysfsAttribute.h"

#include "board/documents/ConfigError.h"
#include "board/documents/TextFile.h"

#include <charconv>

std::string SysfsAttribute::read(const std::string& path) {
    try {
        const std::string text = TextFile::read(path);
        return text.substr(0, text.find('\n'));
    } catch (const ConfigError&) {
        return {};
    }
}

int SysfsAttribute::readNumber(const std::string& path) {
    const std::string text = read(path);
    int number = -1;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = result.ec == std::errc() && result.ptr == text.data() + text.size();
    return isWhole && number >= 0 ? number : -1;
}
