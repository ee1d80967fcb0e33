#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

/// A fresh folder that goes with everything in it.
class TempDir {
public:
    TempDir() {
        std::string name = testing::TempDir() + "nvrhw-XXXXXX";
        EXPECT_NE(mkdtemp(name.data()), nullptr);
        m_Path = name;
    }
    ~TempDir() { std::filesystem::remove_all(m_Path); }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    std::string path(const std::string& name = "") const {
        return name.empty() ? m_Path : m_Path + "/" + name;
    }

    /// Writes a file, making the folders above it, and answers its path.
    std::string write(const std::string& name, const std::string& text) const {
        const std::filesystem::path file = path(name);
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
        return file;
    }

    static std::string read(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::string m_Path;
};
