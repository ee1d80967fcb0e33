#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>

/// The fuzzer's input as a file in a folder of the process's own; the folder is left behind.
inline std::string fuzzFile(const std::uint8_t* data, std::size_t size) {
    static const std::string path = [] {
        const char* parent = std::getenv("TMPDIR");
        std::string folder = std::string(parent == nullptr ? "/tmp" : parent) + "/fuzz-XXXXXX";
        return mkdtemp(folder.data()) == nullptr ? std::abort(), folder : folder + "/input";
    }();
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    return path;
}
