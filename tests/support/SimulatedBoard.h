#pragma once

#include "platform/Diagnostics.h"
#include "platform/HardwareConfigure.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

/// A board in a temporary directory, which is the root directory for as long as the object lives
/// and then goes with everything in it. It has the GPIO device "/dev/gpiodrv", without any bank
/// unless a folder to copy brings some.
class SimulatedBoard {
public:
    using path = std::filesystem::path;

    explicit SimulatedBoard(const char* folder = nullptr)
        : m_OldRoot(GlobalEnv::getInstance()->getRootDirectory()) {
        std::string name = (std::filesystem::temp_directory_path() / "nvrhw-XXXXXX").string();
        EXPECT_NE(mkdtemp(name.data()), nullptr) << name;
        m_Root = name;
        std::filesystem::create_directories(device());
        if (folder != nullptr) {
            std::filesystem::copy(folder, m_Root, std::filesystem::copy_options::recursive);
        }
        GlobalEnv::getInstance()->setRootDirectory(m_Root);
    }

    ~SimulatedBoard() {
        GlobalEnv::getInstance()->setRootDirectory(m_OldRoot);
        std::error_code ignored;
        std::filesystem::remove_all(m_Root, ignored);
    }

    SimulatedBoard(const SimulatedBoard&) = delete;
    SimulatedBoard& operator=(const SimulatedBoard&) = delete;

    const path& root() const { return m_Root; }
    path device() const { return m_Root / "dev/gpiodrv"; }
    path bank(int group) const { return device() / std::to_string(group); }
    path line(int group, int bit) const { return bank(group) / std::to_string(bit); }

    /// Makes a file, by its path on the board.
    void writeFile(const std::string& file, const std::string& text) const {
        const path real = m_Root.string() + file;
        std::filesystem::create_directories(real.parent_path());
        EXPECT_TRUE(std::ofstream(real) << text) << file;
    }

    /// Reads a configuration of a line of group 0, which has these settings from now on.
    GPIOLineSettings configure(int bit, const std::string& settings) const {
        writeFile("/lines.xml", R"(<H><In><item id="1" group="0" validLevel="1" bitPosition=")" +
                                    std::to_string(bit) + "\" " + settings + "/></In></H>");
        GPIOSignalConfigure reader;
        SafePointer<HardwareConfigItemList> list;
        reader.setConfigName("In");
        reader.setConfigFileName("/lines.xml");
        EXPECT_NE(reader.getConfig(list), 0);
        const auto item = list->getHardwareConfigItemList().front();
        return dynamic_pointer_cast<GPIOSignalConfigItem>(item)->getSettings();
    }

    /// Makes a line with this level, and its bank if there is none.
    void addLine(int group, int bit, int level = 0) const {
        std::filesystem::create_directories(bank(group));
        write(group, bit, std::to_string(level) + "\n");
    }

    /// Changes the level of a line in one step, as another process would.
    void setLevel(int group, int bit, int level) const {
        std::fstream file(line(group, bit), std::ios::in | std::ios::out);
        EXPECT_TRUE(file << level << std::flush) << "no line " << line(group, bit);
    }

    /// The level of a line; -1 when its content is no level or the line is not there.
    int level(int group, int bit) const {
        const std::string text = content(group, bit);
        return text == "0\n" || text == "0" ? 0 : text == "1\n" || text == "1" ? 1 : -1;
    }

    /// Replaces the content of a line, as a shell would: there is a moment without content.
    void write(int group, int bit, const std::string& text) const {
        EXPECT_TRUE(std::ofstream(line(group, bit)) << text) << "cannot write " << line(group, bit);
    }

    std::string content(int group, int bit) const {
        std::ifstream file(line(group, bit));
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

private:
    const std::string m_OldRoot;
    path m_Root;
};
