#include "platform/GpioDetect.h"

#include "platform/Gpio.h"
#include "platform/System.h"
#include "support/Gate.h"
#include "support/LogCapture.h"
#include "support/SimulatedBoard.h"

#include <atomic>
#include <dlfcn.h>
#include <functional>
#include <sys/epoll.h>

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int SIGNAL = 10;
constexpr int OUTPUT = 2;

Gate s_EndlessWaits; // the waits of this program without a time limit, the detector's among them
Gate s_OtherWaits;

} // namespace

extern "C" __attribute__((visibility("default"))) int epoll_wait(int sources, epoll_event* ready,
                                                                 int most, int timeout) {
    static const auto original =
        reinterpret_cast<decltype(&epoll_wait)>(dlsym(RTLD_NEXT, "epoll_wait"));
    (timeout < 0 ? s_EndlessWaits : s_OtherWaits).open();
    return original(sources, ready, most, timeout);
}

namespace {

/// A detector over the lines 0 and 1 of group 0. Its handler reads them, counts its calls and acts.
class GPIODetectTest : public testing::Test {
protected:
    GPIODetectTest() {
        s_Current = this;
        addBank();
        EXPECT_NE(m_Gpio.init(), 0);
        open();
    }
    ~GPIODetectTest() noexcept override { // for the tests to come
        m_Board.configure(0, "");
        m_Board.configure(1, "");
    }

    void addBank() {
        for (const int bit : {0, 1, OUTPUT}) {
            m_Board.addLine(0, bit);
        }
    }

    void open() {
        EXPECT_EQ(m_Detect->open(), 0);
        EXPECT_EQ(m_Detect->setSignalHandler(SIGNAL, handle), 0);
        for (const int bit : {0, 1}) {
            EXPECT_EQ(m_Detect->addDetectLine(m_Pid, 0, bit), 0);
        }
    }

    static void handle(int signalNumber) {
        EXPECT_EQ(signalNumber, SIGNAL);
        int levels[2] = {-1, -1};
        for (const int bit : {0, 1}) {
            s_Current->m_Gpio.get(0, bit, levels[bit]);
        }
        s_Current->m_Seen = 10 * levels[1] + levels[0];
        s_Current->m_Calls.open();
        s_Current->m_Action();
    }

    /// Waits for a handler call that has read these levels, as 10 when line 1 is high alone.
    void expectSeen(int levels) {
        for (int calls = 0; m_Seen != levels; ++calls) {
            ASSERT_TRUE(m_Calls.wait(calls + 1)) << "the last call has seen " << m_Seen;
        }
    }

    static inline GPIODetectTest* s_Current = nullptr;

    const int m_Pid = SystemHelper::getPid();
    SimulatedBoard m_Board;
    GPIO m_Gpio;
    LogCapture m_Log;
    Gate m_Calls;
    std::function<void()> m_Action = [] {};
    std::atomic<int> m_Seen{-1};
    std::unique_ptr<GPIODetect> m_Detect{new GPIODetect};
};

TEST_F(GPIODetectTest, CallsForWatchedLinesOnlyAndStopsFromTheHandlerAndWaitsForIt) {
    Gate stopped;
    std::atomic<bool> left{false};
    m_Action = [&] {
        EXPECT_EQ(m_Seen, 11) << "a call before the change";
        EXPECT_EQ(m_Detect->startDetect(), 0);
        EXPECT_EQ(m_Detect->addDetectLine(m_Pid, 0, 1), 0);
        EXPECT_EQ(m_Detect->stopDetect(), 0);
        m_Board.setLevel(0, 1, 0);
        stopped.open();
        std::this_thread::sleep_for(std::chrono::milliseconds(20)); // the time to go wrong in
        left = true;
    };
    EXPECT_EQ(m_Detect->removeDetectLine(m_Pid, 0, 1), 0);
    EXPECT_EQ(m_Detect->startDetect(), 0);
    for (int i = 0; i < 100; ++i) {
        m_Board.setLevel(0, OUTPUT, i % 2);
        m_Board.setLevel(0, 1, i % 2);
        std::ofstream(m_Board.bank(0) / "temporary") << i;
        m_Board.addLine(1, 0);
    }
    m_Board.setLevel(0, 0, 1);
    EXPECT_TRUE(stopped.wait());
    std::thread other([&] { m_Detect->stopDetect(); });
    EXPECT_EQ(m_Detect->stopDetect(), 0);
    EXPECT_TRUE(left);
    other.join();
    EXPECT_EQ(m_Calls.count(), 1);
    m_Action = [] {};
    EXPECT_EQ(m_Detect->startDetect(), 0); // tells what has changed meanwhile
    expectSeen(1);
    open(); // again, while detection runs
    m_Board.setLevel(0, 0, 0);
    expectSeen(0);
}

TEST_F(GPIODetectTest, EndsWithTheLastLevelsOfBurstsAndFindsABankThatWasGoneAlsoWhenCallsThrow) {
    m_Action = [] { throw std::runtime_error("no ink"); };
    EXPECT_EQ(m_Detect->startDetect(), 0);
    const std::function<void()> losses[] = {
        [&] { fs::remove_all(m_Board.bank(0)); },
        [&] { fs::rename(m_Board.bank(0), m_Board.root() / "bank"); },
        [&] { fs::rename(m_Board.device(), m_Board.root() / "device"); },
        [&] { // as a link to a folder that stays
            EXPECT_EQ(m_Detect->stopDetect(), 0);
            fs::rename(m_Board.bank(0), m_Board.root() / "linked");
            fs::create_symlink(m_Board.root() / "linked", m_Board.bank(0));
            open();
            EXPECT_EQ(m_Detect->startDetect(), 0);
            fs::remove(m_Board.bank(0));
        },
        [&] { // in an overflow, which hides it
            int limit = 0;
            std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> limit;
            EXPECT_EQ(m_Detect->stopDetect(), 0);
            for (int i = 0; i <= limit; ++i) {
                m_Board.setLevel(0, OUTPUT, i % 2);
            }
            fs::rename(m_Board.bank(0), m_Board.root() / "hidden");
            EXPECT_EQ(m_Detect->startDetect(), 0);
        },
    };
    for (const auto& lose : losses) {
        for (int i = 1000; i > 0; --i) {
            m_Board.setLevel(0, 1, i / 2 % 2);
            m_Board.setLevel(0, 0, i % 2);
        }
        expectSeen(1);
        EXPECT_TRUE(m_Log.waitFor("no ink"));
        lose();
        expectSeen(-11);
        EXPECT_TRUE(m_Log.waitFor("group 0 cannot be watched"));
        addBank();
        EXPECT_TRUE(m_Log.waitFor("group 0 is watched again"));
        expectSeen(0);
    }
}

TEST_F(GPIODetectTest, NoticesEachWayToChangeALine) {
    EXPECT_EQ(m_Detect->startDetect(), 0);
    fs::permissions(m_Board.line(0, 1), fs::perms::owner_read);
    EXPECT_TRUE(m_Calls.wait()) << "it may have become readable";
    std::ofstream file(m_Board.line(0, 0));
    file << 1 << std::flush; // and not closed
    expectSeen(1);
    std::ofstream(m_Board.root() / "other") << 0;
    fs::rename(m_Board.root() / "other", m_Board.line(0, 0));
    expectSeen(0);
    fs::remove(m_Board.line(0, 0));
    expectSeen(-1);
}

TEST_F(GPIODetectTest, MayBeDestroyedFromTheHandler) {
    for (int round = 1; round <= 20; ++round) {
        Gate threadEnd;
        m_Action = [&] {
            threadEnd.openAtThreadEnd();
            m_Detect.reset(); // while startDetect() may still be on its way back
        };
        m_Board.setLevel(0, 0, round % 2);
        EXPECT_EQ(m_Detect->startDetect(), 0);
        ASSERT_TRUE(threadEnd.wait());
        EXPECT_EQ(m_Calls.count(), round);
        m_Detect.reset(new GPIODetect);
        open();
    }
}

TEST_F(GPIODetectTest, ALineThatIsNotThereReportsFromTheMomentItAppears) {
    EXPECT_EQ(m_Detect->open(), 0); // without a line, whose watch would notice more than its line
    const int waits = s_EndlessWaits.count();
    EXPECT_EQ(m_Detect->startDetect(), 0);
    ASSERT_TRUE(s_EndlessWaits.wait(waits + 1)); // which the next line has to end
    for (const int group : {7, 0}) {             // no bank at all, and a bank without the line
        EXPECT_EQ(m_Detect->addDetectLine(m_Pid, group, 9), 0);
        const int calls = m_Calls.count();
        m_Board.addLine(group, 9);
        EXPECT_TRUE(m_Calls.wait(calls + 1)) << group;
    }
    EXPECT_LT(s_EndlessWaits.count(), waits + 100) << "it waits no more";

    const int retries = s_OtherWaits.count();
    fs::rename(m_Board.bank(7), m_Board.root() / "bank");
    ASSERT_TRUE(s_OtherWaits.wait(retries + 2));
    const int calls = m_Calls.count();
    ASSERT_TRUE(s_OtherWaits.wait(retries + 4));
    EXPECT_EQ(m_Calls.count(), calls) << "a loss is told once";
    EXPECT_EQ(m_Detect->stopDetect(), 0);
    m_Board.addLine(7, 9);
    EXPECT_EQ(m_Detect->addDetectLine(m_Pid, 7, 8), 0); // finds the bank before a thread does
    EXPECT_EQ(m_Detect->startDetect(), 0);
    EXPECT_TRUE(m_Calls.wait(calls + 1));
}

TEST_F(GPIODetectTest, ALineWithADebounceTimeChangesWhenItsLevelHasHeld) {
    fs::last_write_time(m_Board.line(0, 0),
                        fs::file_time_type::clock::now() - std::chrono::hours(1));
    m_Board.configure(0, R"(debounce="10000")");
    m_Board.configure(1, R"(debounce="50")");
    open();
    handle(SIGNAL);
    std::atomic<bool> glitch{false};
    m_Action = [&] { glitch = glitch || m_Seen % 10 == 1; };
    ASSERT_EQ(m_Detect->startDetect(), 0);
    fs::rename(m_Board.line(0, 0), m_Board.root() / "0");
    expectSeen(-1); // what has gone does not bounce
    fs::rename(m_Board.root() / "0", m_Board.line(0, 0));
    expectSeen(0);
    m_Board.setLevel(0, 0, 1); // a glitch, in which line 1 makes the handler read
    m_Board.setLevel(0, 1, 1);
    expectSeen(10);
    EXPECT_FALSE(glitch);
    EXPECT_EQ(m_Detect->stopDetect(), 0);

    m_Board.configure(0, R"(debounce="100")");
    const auto begin = Clock::now();
    m_Board.setLevel(0, 0, 1); // and a level that stays, from before the watch
    open();
    EXPECT_EQ(m_Detect->startDetect(), 0);
    expectSeen(11);
    EXPECT_GE(Clock::now() - begin, std::chrono::milliseconds(100));
    EXPECT_LT(Clock::now() - begin, std::chrono::seconds(4));
    m_Detect->stopDetect();
    EXPECT_NE(m_Gpio.set(0, 0, 0), 0);
    handle(SIGNAL);
    EXPECT_EQ(m_Seen, 10) << "what is driven does not bounce";

    const auto settings = m_Board.configure(
        0, R"(name="A &amp; B" debounce="9" bias="disabled" drive="open-source")");
    EXPECT_EQ(settings.name + std::to_string(settings.debounce), "A & B9");
    EXPECT_EQ(settings.bias, GPIOLineSettings::BIAS_DISABLED);
    EXPECT_EQ(settings.drive, GPIOLineSettings::OPEN_SOURCE);
}

TEST_F(GPIODetectTest, RefusesWhatCannotWork) {
    const auto refused = [&](int result, const std::string& cause) {
        EXPECT_NE(result, 0) << cause;
        m_Log.expectOne({cause});
    };
    refused(m_Detect->setSignalHandler(SIGNAL, nullptr), "null");
    refused(m_Detect->addDetectLine(m_Pid + 1, 0, 0), "process");
    refused(m_Detect->addDetectLine(m_Pid, 0, -1), "negative");
    refused(m_Detect->removeDetectLine(m_Pid, 0, 9), "not watched");
    EXPECT_EQ(m_Detect->open(), 0);
    refused(m_Detect->removeDetectLine(m_Pid, 0, 0), "not watched"); // any more
    open();
    m_Detect->close();
    refused(m_Detect->removeDetectLine(m_Pid, 0, 0), "not watched");
    refused(m_Detect->startDetect(), "not open");
    refused(m_Detect->addDetectLine(m_Pid, 0, 0), "not open");
    EXPECT_EQ(m_Detect->open(), 0);
    refused(m_Detect->startDetect(), "no handler");
    fs::remove_all(m_Board.device());
    refused(m_Detect->open(), "dev/gpiodrv");
}

} // namespace
