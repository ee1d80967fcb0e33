#include "board/qemu/KernelRequests.h"
#include "board/qemu/LineObserver.h"
#include "board/qemu/SimChip.h"
#include "platform/Insight.h"
#include "support/LogCapture.h"
#include "support/SimulatedBoard.h"

#include <csignal>
#include <sys/syscall.h>
#include <sys/wait.h>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// A board with one chip of eight lines as group 0.
class KernelBankTest : public testing::Test {
protected:
    KernelBankTest() {
        m_Chip.linkAs(m_Board.root(), 0);
        EXPECT_NE(m_Gpio.init(), 0);
    }
    ~KernelBankTest() noexcept override {
        s_Requests.after = [] {};
        s_Requests.broken = 0;
        s_Requests.silent = false;
        m_Board.configure(0, ""); // for the tests to come
        m_Board.configure(1, "");
    }

    int get(int bit) {
        int level = -1;
        m_Gpio.get(0, bit, level);
        return level;
    }

    /// What the kernel knows of a line.
    gpio_v2_line_info info(unsigned bit) const {
        const int chip = open(m_Chip.device().c_str(), O_RDWR | O_CLOEXEC);
        gpio_v2_line_info info{};
        info.offset = bit;
        EXPECT_EQ(syscall(SYS_ioctl, chip, GPIO_V2_GET_LINEINFO_IOCTL, &info), 0);
        close(chip);
        return info;
    }

    SimulatedBoard m_Board;
    SimChip m_Chip{"kernel-bank", 8};
    GPIO m_Gpio;
    LogCapture m_Log;
};

TEST_F(KernelBankTest, ABurstOnTwoChipsEndsWithTheLevelsOfTheWiresAndABatchIsOneReadFor64) {
    SimChip many("kernel-many", 72);
    many.linkAs(m_Board.root(), 1);
    Lines lines;
    for (int bit = 0; bit < 80; ++bit) {
        lines.emplace_back(bit < 72 ? 1 : 0, bit % 72);
    }
    LineObserver observer(m_Gpio, 1, lines);
    std::vector<int> levels(lines.size());
    for (int round = 0; round < 3; ++round) {
        for (std::size_t i = 0; i < lines.size(); ++i) {
            levels[i] = static_cast<int>(i + static_cast<std::size_t>(round)) % 3 == 0 ? 1 : 0;
            SimChip& chip = lines[i].first == 1 ? many : m_Chip;
            chip.pull(static_cast<unsigned>(lines[i].second), levels[i] != 0);
        }
        EXPECT_TRUE(observer.waitFor(levels)) << testing::PrintToString(observer.last());
    }
    std::vector<IOInfo> all(72);
    for (int bit = 0; bit < 72; ++bit) {
        all[static_cast<std::size_t>(bit)].setGroupId(1);
        all[static_cast<std::size_t>(bit)].setBitPosion(bit);
    }
    std::vector<IOState> states;
    const int before = s_Requests.reads;
    EXPECT_NE(m_Gpio.get(all, states), 0);
    EXPECT_EQ(s_Requests.reads - before, 2) << "72 lines";
}

TEST_F(KernelBankTest, KnowsWhenTheKernelSawTheLastEdgeAndForgetsItWithTheChip) {
    const auto now = [] { return Clock::now().time_since_epoch().count(); }; // CLOCK_MONOTONIC
    LineObserver observer(m_Gpio, 1, {{0, 0}}); // whose handler nothing else calls
    std::int64_t edge = -1;
    for (const int level : {1, 0}) {
        const std::int64_t before = now();
        m_Chip.pull(0, level != 0);
        ASSERT_TRUE(observer.waitFor({level}));
        EXPECT_TRUE(Insight::findLastEdge(0, 0, edge));
        EXPECT_TRUE(before <= edge && edge <= now()) << before << ", " << edge;
    }
    EXPECT_FALSE(Insight::findLastEdge(0, 1, edge));
    m_Chip.remove();
    EXPECT_TRUE(observer.waitFor({-1})); // and the detector tells of it
    EXPECT_FALSE(Insight::findLastEdge(0, 0, edge));
}

TEST_F(KernelBankTest, WhatOverflowsTheEventBufferEndsWithTheLevelOfTheLine) {
    LineObserver observer(m_Gpio, 1, {{0, 0}, {0, 1}});
    Gate inside;
    Gate over;
    observer.m_Action = [&] {
        inside.open();
        over.wait();
    };
    m_Chip.pull(1, true);
    ASSERT_TRUE(inside.wait());
    for (int i = 0; i <= 200; ++i) { // the kernel keeps 16 changes for a line
        m_Chip.pull(0, i % 2 == 0);
    }
    over.open();
    EXPECT_TRUE(observer.waitFor({1, 1}));
    m_Chip.pull(0, false);
    EXPECT_TRUE(observer.waitFor({0, 1}));
}

TEST_F(KernelBankTest, AGlitchShorterThanTheDebounceTimeIsNoChange) {
    m_Board.configure(0, R"(debounce="20")");
    LineObserver observer(m_Gpio, 1, {{0, 0}, {0, 1}});
    bool other = false;
    int glitches = 0;
    for (int tries = 0; glitches < 5 && tries < 1000; ++tries) {
        const auto begin = Clock::now();
        m_Chip.pull(0, true);
        m_Chip.pull(1, other = !other); // makes the handler read in the glitch
        std::this_thread::sleep_until(begin + milliseconds(5));
        m_Chip.pull(0, false);
        const bool wasShort = Clock::now() - begin < milliseconds(15);
        std::this_thread::sleep_for(milliseconds(60)); // long enough to be reported
        EXPECT_TRUE(observer.waitFor({0, other ? 1 : 0}));
        glitches += wasShort ? 1 : 0;
        if (wasShort) {
            ASSERT_EQ(observer.m_EverHigh, 0);
        }
        observer.m_EverHigh = 0; // what a busy machine has made no glitch may be seen
    }
    EXPECT_EQ(glitches, 5);
    const auto begin = Clock::now();
    m_Chip.pull(0, true);
    EXPECT_TRUE(observer.waitFor({1, other ? 1 : 0}));
    EXPECT_GE(Clock::now() - begin, milliseconds(20));
}

TEST_F(KernelBankTest, ALineHeldElsewhereFailsAloneAndWorksWhenItIsReleased) {
    auto holder = std::make_unique<LineRequest>(m_Chip.device(), 1, GPIO_V2_LINE_FLAG_INPUT);
    LineObserver observer(m_Gpio, 1, {{0, 0}, {0, 1}, {0, 2}, {0, 99}});
    for (const bool high : {true, false, true}) {
        m_Chip.pull(0, high);
        m_Chip.pull(2, !high);
        EXPECT_TRUE(observer.waitFor({high ? 1 : 0, -1, high ? 0 : 1, -1}));
    }
    m_Log.expect(2, {"group 0, bit 1 cannot be read: ", "no line 99: the chip has 8",
                     "held by \"someone-else\": Device or resource busy"});
    EXPECT_EQ(m_Gpio.set(0, 1, 1), 0);
    m_Log.expectOne({"bit 1 cannot be driven", "held by"});
    m_Chip.pull(1, true);
    const int known = s_Requests.attempts;
    for (int i = 0; i < 10000 && s_Requests.attempts < known + 4; ++i) {
        std::this_thread::sleep_for(milliseconds(1)); // nothing changes, nobody asks
    }
    EXPECT_GE(s_Requests.attempts, known + 4) << "the watch asks by itself";
    holder.reset();
    EXPECT_TRUE(observer.waitFor({1, 1, 0, -1}));
    m_Log.expectOne({"bit 1 can be read again (failed ", " times before)"});
    m_Chip.pull(1, false);
    EXPECT_TRUE(observer.waitFor({1, 0, 0, -1}));
}

TEST_F(KernelBankTest, ALineOfAnotherRecorderNamesItsProcess) {
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t other = fork();
    if (other == 0) {
        _exit(m_Gpio.set(0, 1, 1) == 0 || write(ready[1], "!", 1) != 1 || pause() != 0);
    }
    char sign = 0;
    EXPECT_EQ(read(ready[0], &sign, 1), 1);
    EXPECT_EQ(m_Gpio.set(0, 1, 0), 0);
    m_Log.expectOne({"line 1 is held by nvrhw (pid " + std::to_string(other) + ", board-tests): " +
                     "a running recorder or tool holds its lines: Device or resource busy"});
    EXPECT_TRUE(kill(other, SIGKILL) == 0 && waitpid(other, nullptr, 0) == other);
    EXPECT_NE(m_Gpio.set(0, 1, 0), 0);
}

TEST_F(KernelBankTest, AChipThatIsTakenAwayIsFoundAgainUnderAnotherNumber) {
    LineObserver observer(m_Gpio, 1, {{0, 0}, {0, 1}});
    ASSERT_NE(m_Gpio.set(0, 2, 1), 0);
    const std::string device = m_Chip.device();
    m_Chip.remove();
    std::string log;
    EXPECT_TRUE(m_Log.waitFor("group 0 cannot be watched: ", &log));
    EXPECT_EQ(get(0), -1);
    EXPECT_EQ(get(0), -1);
    EXPECT_EQ(m_Gpio.set(0, 2, 0), 0);
    EXPECT_EQ(m_Gpio.set(0, 2, 0), 0);
    log += m_Log.take();
    const std::string gone = m_Board.bank(0).string() + ": No such file or directory";
    for (const char* what :
         {"group 0, bit 0 cannot be read: ", "group 0, bit 2 cannot be driven: "}) {
        auto first = log.find(what + gone);
        if (first == std::string::npos) { // the observer was the first to read, and is about to log
            EXPECT_TRUE(m_Log.waitFor(what + gone, &log)) << what << log;
            first = log.find(what + gone);
        }
        EXPECT_EQ(log.find(what + gone, first + 1), std::string::npos) << what << log;
    }
    {
        SimChip other("kernel-other", 3);
        m_Chip.restore();
        EXPECT_NE(m_Chip.device(), device);
        m_Chip.linkAs(m_Board.root(), 0);
        m_Chip.pull(1, true);
        EXPECT_TRUE(m_Log.waitFor("group 0 is watched again"));
        EXPECT_TRUE(observer.waitFor({0, 1}));
        EXPECT_NE(m_Gpio.set(0, 2, 1), 0);
        EXPECT_TRUE(m_Chip.value(2));

        other.pull(0, true); // the link goes elsewhere, while both chips are there
        other.linkAs(m_Board.root(), 0);
        EXPECT_TRUE(observer.waitFor({1, 0}));
    }
    std::filesystem::remove(m_Board.bank(0));
    m_Board.addLine(0, 0, 1); // and a simulated bank takes its place
    m_Board.addLine(0, 1, 1);
    EXPECT_TRUE(observer.waitFor({1, 1}));
}

TEST_F(KernelBankTest, ABankThatIsExchangedWhileItIsUsedIsTriedAgain) {
    const auto exchangeInNextRequest = [&] {
        s_Requests.after = [&, done = false]() mutable {
            if (!std::exchange(done, true)) {
                m_Chip.remove();
                m_Chip.restore();
                m_Chip.linkAs(m_Board.root(), 0);
                m_Chip.pull(2, true);
            }
        };
    };
    EXPECT_EQ(get(1), 0);
    exchangeInNextRequest(); // which asks what line 2 is
    EXPECT_EQ(get(2), 1);
    EXPECT_EQ(get(1), 0);    // both share a request now
    exchangeInNextRequest(); // which takes line 2 alone again, for line 1 to leave
    EXPECT_NE(m_Gpio.set(0, 1, 1), 0);
    EXPECT_TRUE(m_Chip.value(1));
    EXPECT_EQ(m_Log.take(), "");
}

TEST_F(KernelBankTest, ReadingLeavesDirectionsAndDrivingHasNoOtherLevelInBetween) {
    const auto flags = [&](unsigned bit) {
        return info(bit).flags & (GPIO_V2_LINE_FLAG_INPUT | GPIO_V2_LINE_FLAG_OUTPUT);
    };
    for (const unsigned bit : {0U, 1U, 2U}) {
        m_Chip.pull(bit, true);
    }
    LineRequest(m_Chip.device(), 1, GPIO_V2_LINE_FLAG_OUTPUT); // the direction stays
    for (const unsigned bit : {0U, 1U, 2U}) {
        const auto before = flags(bit);
        get(static_cast<int>(bit));
        EXPECT_EQ(flags(bit), before) << bit;
        EXPECT_EQ(info(bit).consumer, "nvrhw:" + std::to_string(getpid()) + ":board-tests");
    }
    EXPECT_EQ(flags(1), GPIO_V2_LINE_FLAG_OUTPUT);
    EXPECT_EQ(get(0), 1);

    for (const int bit : {0, 1, 3, 4}) { // read before, and not; the pull keeps them high
        m_Chip.pull(static_cast<unsigned>(bit), bit != 1); // which is an output: it keeps its level
        s_Requests.after = [&] { EXPECT_TRUE(m_Chip.value(static_cast<unsigned>(bit))); };
        get(2 + bit);
        EXPECT_NE(m_Gpio.set(0, bit, 1), 0);
        m_Chip.pull(static_cast<unsigned>(bit), false);
        for (const int added : {5, 6, 7}) { // new requests leave the output alone
            get(added);
        }
        EXPECT_EQ(get(bit), 1);
        s_Requests.after = [] {};
        EXPECT_NE(m_Gpio.set(0, bit, 0), 0);
        EXPECT_FALSE(m_Chip.value(static_cast<unsigned>(bit)));
    }
}

TEST_F(KernelBankTest, SettingsReachTheKernelAndEveryDetectorIsTold) {
    m_Board.configure(0, R"(bias="pull-up" debounce="3" drive="open-drain")");
    m_Board.configure(1, R"(bias="disabled" drive="open-source" debounce="3")");
    LineObserver one(m_Gpio, 1, {{0, 0}, {0, 2}});
    LineObserver two(m_Gpio, 2, {{0, 2}, {0, 0}});
    EXPECT_NE(m_Gpio.set(0, 1, 1), 0);
    const auto input = info(0);
    const std::uint64_t edges = GPIO_V2_LINE_FLAG_EDGE_RISING | GPIO_V2_LINE_FLAG_EDGE_FALLING;
    EXPECT_EQ(input.flags, GPIO_V2_LINE_FLAG_USED | GPIO_V2_LINE_FLAG_INPUT | edges |
                               GPIO_V2_LINE_FLAG_BIAS_PULL_UP);
    ASSERT_EQ(input.num_attrs, 1U);
    EXPECT_EQ(input.attrs[0].debounce_period_us, 3000U);
    EXPECT_EQ(info(1).flags, GPIO_V2_LINE_FLAG_USED | GPIO_V2_LINE_FLAG_OUTPUT |
                                 GPIO_V2_LINE_FLAG_OPEN_SOURCE | GPIO_V2_LINE_FLAG_BIAS_DISABLED);
    for (const bool high : {false, true, false, true}) {
        const int level = high ? 1 : 0;
        m_Chip.pull(0, high);
        m_Chip.pull(2, high);
        EXPECT_TRUE(one.waitFor({level, level}));
        EXPECT_TRUE(two.waitFor({level, level}));
    }
    EXPECT_NE(m_Gpio.set(0, 2, 0), 0); // a watched line that is driven tells so
    EXPECT_TRUE(one.waitFor({1, 0}));
    EXPECT_TRUE(two.waitFor({0, 1}));
    std::filesystem::create_symlink(m_Chip.device(), m_Board.root() / "new");
    std::filesystem::rename(m_Board.root() / "new", m_Board.bank(0)); // as udev does: outputs stay
    m_Chip.pull(0, false);
    EXPECT_TRUE(one.waitFor({0, 0}));
}

TEST_F(KernelBankTest, AFailureIsLoggedOnceCountedAndHeals) {
    const auto fail = [](unsigned long request, int error) {
        s_Requests.error = error;
        s_Requests.broken = request;
    };
    fail(GPIO_V2_GET_LINEINFO_IOCTL, EINVAL);
    EXPECT_EQ(get(0), -1);
    m_Log.expectOne({"gpiodrv/0: ", "no GPIO uAPI v2; it needs Linux 5.10 or later"});
    fail(GPIO_V2_LINE_GET_VALUES_IOCTL, EIO);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(get(0), -1);
    }
    m_Log.expectOne(
        {"group 0, bit 0 cannot be read: ", "line 0: Input/output error", "(failed 1 "});
    fail(0, 0);
    EXPECT_EQ(get(0), 0);
    m_Log.expectOne({"group 0, bit 0 can be read again (failed 3 times before)"});
    EXPECT_NE(m_Gpio.set(0, 1, 0), 0);
    fail(GPIO_V2_LINE_SET_VALUES_IOCTL, EIO);
    EXPECT_EQ(m_Gpio.set(0, 1, 1), 0);
    m_Log.expectOne({"group 0, bit 1 cannot be driven: ", "line 1: Input/output error"});
    fail(0, 0);
    EXPECT_NE(m_Gpio.set(0, 1, 1), 0);
    EXPECT_TRUE(m_Chip.value(1));

    LineObserver observer(m_Gpio, 1, {{0, 0}});
    fail(GPIO_V2_LINE_GET_VALUES_IOCTL, EIO);
    m_Chip.pull(0, true);
    EXPECT_TRUE(observer.waitFor({-1}));
    fail(0, 0);
    EXPECT_TRUE(observer.waitFor({1})) << "a change that could not be read is looked at again";
}

TEST_F(KernelBankTest, AChipWithoutInterruptsIsLookedAt) {
    s_Requests.silent = true;
    m_Board.configure(0, R"(debounce="20")");
    LineObserver observer(m_Gpio, 1, {{0, 0}, {0, 1}});
    m_Log.expect(2, {"bit 1 is looked at now and then, as its changes are not reported: "});
    for (const bool high : {true, false, true}) {
        m_Chip.pull(0, high);
        m_Chip.pull(1, !high);
        EXPECT_TRUE(observer.waitFor({high ? 1 : 0, high ? 0 : 1}));
    }
    EXPECT_EQ(m_Log.take(), "");
}

} // namespace
