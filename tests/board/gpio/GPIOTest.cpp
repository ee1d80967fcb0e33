#include "platform/Gpio.h"

#include "platform/Insight.h"
#include "support/LogCapture.h"
#include "support/SimulatedBoard.h"

#include <atomic>
#include <map>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

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

    /// Why the last attempt failed, as a log would tell it; empty when it did not.
    static std::string fault(Insight::Operation operation, int group, int bit) {
        Cause cause;
        const bool found = Insight::findLineFault(operation, group, bit, cause);
        EXPECT_EQ(found, static_cast<bool>(cause));
        return cause.text();
    }

    SimulatedBoard m_Board;
    GPIO m_Gpio;
    LogCapture m_Log;
};

TEST_F(GPIOTest, ReadsTheContentOfAFileAndDrivesOverIt) {
    const std::map<int, std::vector<std::string>> contents{
        {0, {"0", "0\n", "0 \t\r\n"}},
        {1, {"1", "1\n", "1" + std::string(200, ' ')}},
        {-1, {"2", "01", "10", " 1", "1 0", "1x", "on", "\n", "", std::string("1\0", 2)}}};
    m_Board.addLine(0, 4);
    for (const auto& [level, texts] : contents) {
        for (const std::string& text : texts) {
            m_Board.write(0, 4, text);
            EXPECT_EQ(get(0, 4), level) << testing::PrintToString(text);
            for (const int driven : {0, 1, -3}) {
                m_Board.write(0, 4, text);
                EXPECT_NE(m_Gpio.set(0, 4, driven), 0);
                EXPECT_EQ(m_Board.content(0, 4), driven != 0 ? "1\n" : "0\n") << text;
            }
        }
    }
}

TEST_F(GPIOTest, RefusesWhatIsNoLineAndHealsAndLogsEachOnce) {
    m_Board.addLine(0, 0);
    m_Board.addLine(0, -5);
    m_Board.addLine(-1, 0);
    fs::create_directory(m_Board.line(0, 1));
    mkfifo(m_Board.line(0, 2).c_str(), 0600);
    fs::create_symlink(m_Board.line(0, 0), m_Board.line(0, 3));
    m_Board.addLine(2, 0);
    EXPECT_EQ(get(2, 0), 0);
    fs::remove_all(m_Board.bank(2)); // and something else comes in its place
    fs::create_symlink("/dev/null", m_Board.bank(2));
    const std::map<std::pair<int, int>, std::string> causes{{{-1, 0}, "negative"},
                                                            {{0, -5}, "negative"},
                                                            {{0, 9}, "No such file or directory"},
                                                            {{0, 1}, "0/1: not a regular file"},
                                                            {{0, 3}, "symbolic link"},
                                                            {{1, 0}, "No such file or directory"},
                                                            {{0, 2}, "0/2: not a regular file"},
                                                            {{2, 0}, "not a bank"}};
    for (const auto& [line, cause] : causes) {
        const auto [group, bit] = line;
        const auto name = "group " + std::to_string(group) + ", bit " + std::to_string(bit);
        EXPECT_EQ(get(group, bit), -1) << name;
        const std::string found = fault(Insight::READ, group, bit);
        EXPECT_NE(found.find(cause), std::string::npos) << name << ": " << found;
        EXPECT_EQ(fault(Insight::DRIVE, group, bit), "") << name;
        m_Log.expectOne({name + " cannot be read: " + found + " ("});
        EXPECT_EQ(m_Gpio.set(group, bit, 1), 0) << name;
        m_Log.expectOne({name + " cannot be driven: " + fault(Insight::DRIVE, group, bit) + " ("});
    }
    EXPECT_FALSE(fs::exists(m_Board.line(0, 9))) << "a drive made a line";
    EXPECT_EQ(get(0, 0), 0) << "driven through a link";
    for (const int bit : {1, 2, 3, 9}) {
        EXPECT_EQ(get(0, bit), -1);
        EXPECT_EQ(m_Log.take(), "") << "known";
        fs::remove(m_Board.line(0, bit));
        m_Board.addLine(0, bit);
        m_Board.write(0, bit, "up\n");
        EXPECT_EQ(get(0, bit), -1);
        m_Log.expectOne({"cannot be read", "but \"up?\"", "(failed 2 times before)"});
        EXPECT_NE(m_Gpio.set(0, bit, 1), 0);
        m_Log.expectOne({"can be driven again"});
        EXPECT_EQ(get(0, bit), 1);
        m_Log.expectOne({std::to_string(bit) + " can be read again (failed 1 times before)"});
        EXPECT_EQ(fault(Insight::READ, 0, bit) + fault(Insight::DRIVE, 0, bit), "");
    }
}

TEST_F(GPIOTest, ABatchDeliversWhatItCouldReadAndAllWhenTheDeviceIsThere) {
    std::vector<IOInfo> lines(2);
    lines[0].setGroupId(1);
    std::vector<IOState> states(7);
    m_Board.addLine(0, 0, 1);
    EXPECT_EQ(m_Gpio.get(lines, states), 0);
    EXPECT_EQ(states.size(), 1U);
    m_Board.addLine(1, 0);
    m_Gpio.m_DeviceName = "/dev/other";
    m_Log.take();
    EXPECT_EQ(m_Gpio.init(), 0);
    m_Log.expectOne({"dev/other", "No such file or directory"});
    std::ofstream(m_Board.root() / "dev/other") << "";
    EXPECT_EQ(m_Gpio.init(), 0);
    m_Log.expectOne({"dev/other: not a directory of banks"});
    fs::remove(m_Board.root() / "dev/other");
    fs::rename(m_Board.device(), m_Board.root() / "dev/other");
    EXPECT_NE(m_Gpio.get(lines, states), 0);
    EXPECT_EQ(states.size(), 2U);
    EXPECT_EQ(m_Gpio.uninit() + get(0, 0), 1 - 1);
}

TEST_F(GPIOTest, OtherReadersNeverSeeATornLevel) {
    m_Board.addLine(0, 5);
    std::atomic<int> driving{2};
    const auto drive = [&] {
        for (int i = 0; i < 2000; ++i) {
            EXPECT_NE(m_Gpio.set(0, 5, i % 2), 0);
        }
        --driving;
    };
    const auto read = [&](auto level) {
        while (driving > 0) {
            ASSERT_NE(level(), -1);
        }
    };
    std::thread threads[] = {std::thread(drive), std::thread(drive),
                             std::thread(read, [&] { return m_Board.level(0, 5); }),
                             std::thread(read, [&] { return get(0, 5); })};
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST_F(GPIOTest, WaitsForAShellThatHasJustEmptiedTheFileButOnlyThen) {
    m_Board.addLine(0, 4);
    for (int round = 1; round <= 20; ++round) {
        const auto begin = Clock::now();
        m_Board.write(0, 4, "");
        std::thread shell([&] { m_Board.setLevel(0, 4, 1); });
        const bool patient = get(0, 4) == 1;
        EXPECT_TRUE(patient || Clock::now() - begin > std::chrono::milliseconds(90)); // held up
        shell.join();
    }
    m_Board.write(0, 4, "");
    for (const int age : {-1, 1}) { // the clock may have been set back
        fs::last_write_time(m_Board.line(0, 4),
                            fs::file_time_type::clock::now() - std::chrono::hours(age));
        const auto begin = Clock::now();
        for (int i = 0; i < 200; ++i) {
            EXPECT_EQ(get(0, 4), -1);
        }
        EXPECT_LT(Clock::now() - begin, std::chrono::seconds(10));
    }
}

} // namespace
