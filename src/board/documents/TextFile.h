#pragma once

#include <cstddef>
#include <string>

/// Reads text files that come from outside. Everything but a readable regular file without zero
/// bytes and of at most MAX_SIZE bytes is a ConfigError; it never waits for a fifo's writer.
class TextFile {
public:
    static constexpr std::size_t MAX_SIZE = std::size_t{16} * 1024 * 1024;

    static std::string read(const std::string& path);

    /// False, with `text` untouched, when there is no such file.
    static bool readIfPresent(const std::string& path, std::string& text);

    /// The first line with bytes that are not UTF-8, from 1; 0 when there is none. The readers
    /// take such bytes as they are.
    static int lineNotUtf8(const std::string& text);
};
