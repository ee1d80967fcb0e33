#include "platform/Gpio.h"

#include "support/Gate.h"
#include "support/LogCapture.h"
#include "support/SimulatedBoard.h"

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

namespace {

namespace fs = std::filesystem;

class GPIOTest : public testing::Test {
protected:
    GPIOTest() { EXPECT_NE(m_Gpio.init(), 0); }

    /// The level of a line; -1 when it cannot be read, which must not touch the caller's variable.
    int get(int group, int bit) {
        int level = 7;
        const bool read = m_Gpio.get(group, bit, level) != 0;
        EXPECT_EQ(level != 7, read);
        return read ? level : -1;
    }

    SimulatedBoard m_Board;
    GPIO m_Gpio;
};

TEST_F(GPIOTest, ReadsALevelFromTheContentOfItsFile) {
    const std::map<int, std::vector<std::string>> contents{
        {0, {"0", "0\n", "0 \t\r\n"}},
        {1, {"1", "1\n", "1" + std::string(200, ' ')}},
        {-1, {"2", "01", "10", " 1", "1 0", "1x", "on", "\n", std::string("1\0", 2)}}};
    LogCapture log;
    for (const auto& [level, texts] : contents) {
        for (const std::string& text : texts) {
            m_Board.addLine(0, 4);
            m_Board.write(0, 4, text);
            EXPECT_EQ(get(0, 4), level) << testing::PrintToString(text);
        }
    }
}

TEST_F(GPIOTest, RefusesWhatIsNoLineAndHealsWhenItIsOne) {
    LogCapture log;
    const auto expectRefused = [&](int group, int bit, const std::string& cause) {
        const auto name = "group " + std::to_string(group) + ", bit " + std::to_string(bit);
        EXPECT_EQ(get(group, bit), -1) << name;
        log.expectOne({name + " cannot be read", cause});
        EXPECT_EQ(m_Gpio.set(group, bit, 1), 0) << name;
        log.expectOne({name + " cannot be driven", cause});
    };
    m_Board.addLine(0, 0);
    expectRefused(0, 9, "No such file or directory");
    EXPECT_FALSE(fs::exists(m_Board.line(0, 9))) << "a drive made a line";
    expectRefused(1, 0, "No such file or directory");
    fs::create_directory(m_Board.line(0, 1));
    expectRefused(0, 1, "0/1");
    mkfifo(m_Board.line(0, 2).c_str(), 0600);
    expectRefused(0, 2, "0/2");
    fs::create_symlink(m_Board.line(0, 0), m_Board.line(0, 3));
    expectRefused(0, 3, "symbolic link");
    EXPECT_EQ(m_Board.level(0, 0), 0) << "driven through a link";
    fs::create_symlink("/dev/null", m_Board.bank(2));
    expectRefused(2, 0, "not a bank");
    std::ofstream(m_Board.bank(3)) << "1\n";
    expectRefused(3, 0, "not a bank");
    m_Board.addLine(0, -5);
    expectRefused(0, -5, "negative");
    m_Board.addLine(-1, 0);
    expectRefused(-1, 0, "negative");
    for (const int bit : {1, 2, 3, 9}) {
        fs::remove(m_Board.line(0, bit));
        m_Board.addLine(0, bit);
        EXPECT_NE(m_Gpio.set(0, bit, 1), 0);
        EXPECT_EQ(get(0, bit), 1);
    }
}

TEST_F(GPIOTest, LogsAFailureOncePerCause) {
    m_Board.addLine(0, 1, 1);
    LogCapture log;
    const auto readTwice = [&](int expected) {
        EXPECT_EQ(get(0, 4), expected);
        EXPECT_EQ(get(0, 1), 1);
        EXPECT_EQ(get(0, 4), expected);
    };
    readTwice(-1);
    log.expectOne({"group 0, bit 4 cannot be read", "No such file or directory"});
    m_Board.addLine(0, 4);
    m_Board.write(0, 4, "up\n");
    readTwice(-1);
    log.expectOne({"group 0, bit 4 cannot be read", "but \"up?\""});
    m_Board.addLine(0, 4, 1);
    readTwice(1);
    log.expectOne({"group 0, bit 4 can be read again"});
    readTwice(1);
    EXPECT_TRUE(log.take().empty());
}

TEST_F(GPIOTest, ABatchDeliversWhatItCouldRead) {
    std::vector<IOInfo> lines;
    std::vector<IOState> states(3);
    for (const auto& [group, bit] : {std::pair(1, 1), {0, 2}, {7, 0}, {0, 1}, {0, 3}, {0, 1}}) {
        lines.emplace_back().setId(10 * group + bit);
        lines.back().setGroupId(group);
        lines.back().setBitPosion(bit);
    }
    const auto read = [&] {
        std::string text = m_Gpio.get(lines, states) != 0 ? "all" : "some";
        for (const IOState& state : states) {
            text += " " + std::to_string(state.getId()) + "=" + std::to_string(state.getLevel());
        }
        return text;
    };
    LogCapture log;
    m_Board.addLine(0, 1, 1);
    m_Board.addLine(0, 2, 0);
    m_Board.addLine(1, 1, 1);
    EXPECT_EQ(read(), "some 11=1 2=0 1=1 1=1");
    m_Board.addLine(7, 0, 1);
    m_Board.addLine(0, 3);
    EXPECT_EQ(read(), "all 11=1 2=0 70=1 1=1 3=0 1=1");
    lines.clear();
    EXPECT_EQ(read(), "all");
}

TEST_F(GPIOTest, DrivesOverAnyContent) {
    LogCapture log;
    for (const char* content : {"0", "1\n", "", "rubbish of some length", "0   \n\n"}) {
        for (const int level : {0, 1, -3}) {
            m_Board.addLine(0, 5);
            m_Board.write(0, 5, content);
            EXPECT_NE(m_Gpio.set(0, 5, level), 0);
            EXPECT_EQ(m_Board.content(0, 5), level != 0 ? "1\n" : "0\n") << content;
        }
    }
}

TEST_F(GPIOTest, OtherReadersNeverSeeATornLevel) {
    m_Board.addLine(0, 5);
    Gate driven;
    const auto drive = [&] {
        for (int i = 0; i < 2000; ++i) {
            EXPECT_NE(m_Gpio.set(0, 5, i % 2), 0);
        }
        driven.open();
    };
    const auto read = [&](auto level) {
        while (driven.count() < 2 && level() != -1) {
        }
        EXPECT_NE(level(), -1);
    };
    std::thread threads[] = {std::thread(drive), std::thread(drive),
                             std::thread(read, [&] { return m_Board.level(0, 5); }),
                             std::thread(read, [&] { return get(0, 5); })};
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST_F(GPIOTest, WaitsForAShellThatHasJustEmptiedTheFileButOnlyThen) {
    using Clock = std::chrono::steady_clock;
    LogCapture log;
    for (int round = 1; round <= 20; ++round) {
        const auto begin = Clock::now();
        m_Board.addLine(0, 4);
        m_Board.write(0, 4, "");
        std::thread reader([&] { // says nothing when the shell was held up for too long
            EXPECT_TRUE(get(0, 4) == 1 || Clock::now() - begin > std::chrono::milliseconds(90));
        });
        std::this_thread::yield();
        m_Board.setLevel(0, 4, 1);
        reader.join();
    }
    m_Board.write(0, 4, "");
    fs::last_write_time(m_Board.line(0, 4),
                        fs::file_time_type::clock::now() - std::chrono::hours(1));
    const auto begin = Clock::now();
    for (int i = 0; i < 200; ++i) {
        EXPECT_EQ(get(0, 4), -1);
    }
    EXPECT_LT(Clock::now() - begin, std::chrono::seconds(10));
}

TEST_F(GPIOTest, WorksFromTheMomentTheDeviceAppears) {
    LogCapture log;
    m_Gpio.m_DeviceName = "/dev/other";
    EXPECT_EQ(m_Gpio.init(), 0);
    log.expectOne({"dev/other", "No such file or directory"});
    EXPECT_EQ(get(0, 1), -1);
    m_Board.addLine(0, 1, 1);
    fs::rename(m_Board.device(), m_Board.root() / "dev/other");
    EXPECT_EQ(get(0, 1), 1);
    EXPECT_NE(m_Gpio.uninit(), 0);
    EXPECT_EQ(get(0, 1), -1);
    EXPECT_NE(m_Gpio.init(), 0);
    EXPECT_EQ(get(0, 1), 1);
}

} // namespace
