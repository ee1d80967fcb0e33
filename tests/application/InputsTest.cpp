// What a board tells of its inputs, on a simulated board with the real detector.
#include "support/ChangeRecorder.h"
#include "support/Gate.h"
#include "support/LogCapture.h"
#include "support/SimulatedBoard.h"

#include <algorithm>
#include <atomic>
#include <optional>
#include <random>
#include <sstream>
#include <thread>

using nvrhw::Board;
using nvrhw::BoardOptions;
using nvrhw::InputChange;
using nvrhw::Registration;

namespace {

/// Two inputs, "door" at 0/0 and 2 at 0/1, and an output at 0/7.
class InputsTest : public testing::Test {
protected:
    InputsTest() {
        m_Files.writeFile("/hd1/program/config/hardwareConfig.xml", R"(<Hardware><GPIOAlarmIn>
            <item id="1" group="0" bitPosition="0" validLevel="1" name="door"/>
            <item id="2" group="0" bitPosition="1" validLevel="1"/></GPIOAlarmIn><GPIOAlarmOut>
            <item id="1" group="0" bitPosition="7" validLevel="1"/></GPIOAlarmOut></Hardware>)");
        for (const int bit : {0, 1, 7}) {
            m_Files.addLine(0, bit);
        }
    }

    Board& open(unsigned mailbox = 256) {
        BoardOptions options;
        options.linesOnly = true;
        options.mailbox = mailbox;
        return m_Board.emplace(options);
    }

    SimulatedBoard m_Files;
    std::optional<Board> m_Board;
};

TEST_F(InputsTest, EveryRegistrationBeginsWithThePresentStateHoweverLateItComes) {
    m_Files.setLevel(0, 1, 1);
    Board& board = open();
    ChangeRecorder first, late, one, inPlace;
    const auto firstOnes = board.onInput(std::ref(first));
    EXPECT_EQ(first.takeUpTo("2~alarm "), "1~normal 2~alarm ");
    m_Files.setLevel(0, 0, 1);
    EXPECT_EQ(first.takeUpTo("1=alarm "), "1=alarm ");

    const auto lateOnes = board.onInput(std::ref(late));
    const auto oneOnly = board.onInput(std::ref(one), 2);
    const auto inPlaceOnes = board.onInput(nvrhw::inPlace, std::ref(inPlace));
    EXPECT_EQ(inPlace.take(), "1~alarm 2~alarm ") << "told before onInput() returned";
    EXPECT_EQ(late.takeUpTo("2~alarm "), "1~alarm 2~alarm ");
    m_Files.setLevel(0, 0, 0);
    EXPECT_EQ(late.takeUpTo("1=normal "), "1=normal ");
    EXPECT_EQ(inPlace.takeUpTo("1=normal "), "1=normal ");
    m_Files.setLevel(0, 1, 0);
    EXPECT_EQ(one.takeUpTo("2=normal "), "2~alarm 2=normal ");
    EXPECT_EQ(first.takeUpTo("2=normal "), "1=normal 2=normal ");
}

TEST_F(InputsTest, LostAndFoundLinesAreChangesWithTheirCauseAndTime) {
    const LogCapture log; // tells the same
    Board& board = open();
    ChangeRecorder told;
    const auto watch = board.onInput(std::ref(told));
    told.takeUpTo("2~normal ");
    std::filesystem::remove(m_Files.line(0, 0));
    EXPECT_EQ(told.takeUpTo("1=unreadable "), "1=unreadable ");
    const auto door = board.input("door");
    EXPECT_EQ(door.level(), -1);
    EXPECT_EQ(door.cause().error, ENOENT);
    EXPECT_EQ(door.cause().where, m_Files.line(0, 0));
    m_Files.addLine(0, 0, 1);
    EXPECT_EQ(told.takeUpTo("1=alarm "), "1=alarm ");
    const auto bothTold = [&] { // in either order: a batch may fall into the renaming
        std::string text = told.takeUpTo(" ");
        while (std::count(text.begin(), text.end(), ' ') < 2) {
            text += told.takeUpTo(" ");
        }
        return text;
    };
    std::filesystem::rename(m_Files.bank(0), m_Files.device() / "away");
    const std::string lost = bothTold();
    EXPECT_TRUE(lost == "1=unreadable 2=unreadable " || lost == "2=unreadable 1=unreadable ")
        << lost;
    std::filesystem::rename(m_Files.device() / "away", m_Files.bank(0));
    const std::string found = bothTold();
    EXPECT_TRUE(found == "1=alarm 2=normal " || found == "2=normal 1=alarm ") << found;

    const InputChange last = told.inputs().back();
    EXPECT_LE(last.time.steady, std::chrono::steady_clock::now());
    EXPECT_LT(std::chrono::system_clock::now() - last.time.wall, std::chrono::seconds(10));
    std::ostringstream text;
    text << told.inputs()[2];
    EXPECT_EQ(text.str().substr(12), " input 1 (door) unreadable: " + m_Files.line(0, 0).string() +
                                         ": No such file or directory");
}

TEST_F(InputsTest, AnInversionIsAChangeInBothDirections) {
    Board& board = open();
    ChangeRecorder told;
    const auto watch = board.onInput(nvrhw::inPlace, std::ref(told));
    told.take();
    const auto door = board.input(1);
    EXPECT_TRUE(door.setInverted(true));
    EXPECT_EQ(told.take(), "1=alarm ");
    EXPECT_TRUE(door.isInverted());
    EXPECT_TRUE(door.setInverted(true));
    EXPECT_TRUE(door.setInverted(false));
    EXPECT_EQ(told.take(), "1=normal ");
    m_Board.reset();
    EXPECT_EQ(door.state(), nvrhw::Input::Normal);
    EXPECT_EQ(door.setInverted(true).error().code(), nvrhw::Error::Closed);
}

TEST_F(InputsTest, AFullMailboxKeepsTheLatestStateAndCountsTheRest) {
    Board& board = open(1); // room for one change of each input: two
    ChangeRecorder told, seen;
    Gate entered, leave;
    auto slow = board.onInput([&](const InputChange& change) {
        told(change);
        if (change.input.id == 2 && change.isPresent) {
            entered.open();
            leave.wait();
        }
    });
    ASSERT_TRUE(entered.wait());
    const auto watch = board.onInput(nvrhw::inPlace, std::ref(seen));
    seen.take();
    const auto flip = [&](int bit, int level, const std::string& text) {
        m_Files.setLevel(0, bit, level);
        EXPECT_EQ(seen.takeUpTo(text), text);
    };
    flip(0, 1, "1=alarm "); // these two fit
    flip(0, 0, "1=normal ");
    flip(0, 1, "1=alarm "); // the rest does not
    flip(1, 1, "2=alarm ");
    flip(1, 0, "2=normal ");
    flip(1, 1, "2=alarm ");
    flip(0, 0, "1=normal "); // as told before it
    leave.open();
    EXPECT_EQ(told.takeUpTo("2=alarm+2 "), "1~normal 2~normal 1=alarm 1=normal 2=alarm+2 ");
    flip(0, 1, "1=alarm ");
    slow.finish(); // tells what waits, if it does
    EXPECT_EQ(told.take(), "1=alarm+2 ");
    flip(0, 0, "1=normal ");
    EXPECT_EQ(told.take(), "");
}

TEST_F(InputsTest, ACallbackMayEndItselfRegisterAnotherDriveAndRaise) {
    LogCapture log;
    Board& board = open();
    const auto output = board.output(1);
    for (const bool isInPlace : {false, true}) {
        ChangeRecorder told;
        Gate changed;
        std::optional<Registration> own, other;
        const auto act = [&](const InputChange& change) {
            if (change.isPresent || change.input.id != 1) {
                return;
            }
            EXPECT_TRUE(output.hold());
            EXPECT_TRUE(change.input.setInverted(!change.input.isInverted()));
            other.emplace(board.onInput(std::ref(told)));
            own->end();
            changed.open();
            throw std::runtime_error("on purpose");
        };
        own.emplace(isInPlace ? board.onInput(nvrhw::inPlace, act) : board.onInput(act));
        m_Files.setLevel(0, 0, 1 - m_Files.level(0, 0));
        ASSERT_TRUE(changed.wait());
        const std::string first = told.takeUpTo("2~normal ");
        EXPECT_EQ(first.substr(0, 2), "1~");
        EXPECT_TRUE(output.state().isActive);
        EXPECT_TRUE(output.rest());
        m_Files.setLevel(0, 0, 1 - m_Files.level(0, 0));
        EXPECT_EQ(
            told.takeUpTo(first == "1~alarm 2~normal " ? "1=normal " : "1=alarm ").substr(0, 2),
            "1=");
        EXPECT_EQ(changed.count(), 1) << "called after its end";
        EXPECT_TRUE(log.waitFor("for inputs: the callback ended by an exception: on purpose"));
    }
}

// What a callback holds goes with it, without a lock: its own registration, or the board itself.
TEST_F(InputsTest, ACallbackMayOwnItsRegistrationOrTheBoard) {
    for (const bool isInPlace : {false, true}) {
        LogCapture log;
        Board& board = open();
        const auto own = std::make_shared<std::optional<Registration>>();
        std::atomic<int> calls{0};
        Gate ended;
        const auto endAtOnce = [&, own](const InputChange&) {
            ++calls;
            EXPECT_TRUE(Registration::endCurrent()); // there may be no Registration yet
            ended.open();
        };
        own->emplace(isInPlace ? board.onInput(nvrhw::inPlace, endAtOnce)
                               : board.onInput(endAtOnce));
        ASSERT_TRUE(ended.wait());
        EXPECT_FALSE(Registration::endCurrent()) << "this is no callback";
        m_Board.reset();
        EXPECT_EQ(calls, 1);
        own->reset();

        BoardOptions options;
        options.linesOnly = true;
        auto owned = std::make_shared<Board>(options);
        const auto hold = [owned](const InputChange&) {};
        auto watch = isInPlace ? owned->onInput(nvrhw::inPlace, hold) : owned->onInput(hold);
        owned.reset();
        watch.end();
        EXPECT_EQ(log.take(), "");
    }
}

TEST_F(InputsTest, ABoardDestroyedInsideItsCallbackEndsAfterItAndSaysSo) {
    for (const bool isInPlace : {false, true}) {
        LogCapture log;
        Board& board = open();
        Gate destroyed;
        const auto act = [&](const InputChange& change) {
            if (!change.isPresent) {
                m_Board.reset();
                destroyed.open();
            }
        };
        const auto watch = isInPlace ? board.onInput(nvrhw::inPlace, act) : board.onInput(act);
        m_Files.setLevel(0, 0, 1 - m_Files.level(0, 0));
        ASSERT_TRUE(destroyed.wait());
        log.expectOne({"BoardError: the board is destroyed inside a callback"});
        while (!m_Board.has_value()) { // until the old one has gone
            try {
                open();
            } catch (const nvrhw::Error& error) {
                ASSERT_EQ(error.code(), nvrhw::Error::Busy);
                std::this_thread::yield();
            }
        }
    }
}

// Lines flip, vanish and return, registrations come and go; whatever happens each of them is told a
// gapless story: one present state, no state twice in a row, and in the end what the line is.
TEST_F(InputsTest, WhatIsToldIsExactUnderLoad) {
    constexpr int LINES = 8;
    const LogCapture log;
    std::string items;
    for (int bit = 0; bit < LINES; ++bit) {
        items += R"(<item id=")" + std::to_string(bit) + R"(" group="0" bitPosition=")" +
                 std::to_string(bit) + R"(" validLevel="1"/>)";
        m_Files.addLine(0, bit);
    }
    m_Files.writeFile("/hd1/program/config/hardwareConfig.xml",
                      "<H><GPIOAlarmIn>" + items + "</GPIOAlarmIn><GPIOAlarmOut/></H>");
    struct Story {
        std::atomic<int> last[LINES];
        std::atomic<unsigned> faults{0};
        explicit Story() {
            for (auto& each : last) {
                each = -1;
            }
        }
        void operator()(const InputChange& change) {
            const int before = last[change.input.id].exchange(change.state);
            if (change.isPresent != (before == -1) || before == change.state) {
                ++faults;
            }
        }
    };
    const char* const length = std::getenv("NVRHW_LOAD_SECONDS");
    const auto end = std::chrono::steady_clock::now() +
                     std::chrono::milliseconds(
                         length != nullptr && *length != '\0' ? 1000 * std::atoi(length) : 500);
    const auto goesOn = [&] { return std::chrono::steady_clock::now() < end; };
    Board& board = open(4);
    Story first, inPlace;
    const auto watch = board.onInput(std::ref(first));
    const auto watchInPlace = board.onInput(nvrhw::inPlace, std::ref(inPlace));
    std::atomic<unsigned> faults{0}, flips{0};
    std::vector<std::thread> threads;
    for (int bit = 0; bit < LINES; ++bit) {
        threads.emplace_back([&, bit] {
            std::minstd_rand random(static_cast<unsigned>(bit + 1));
            for (int level = 1; goesOn(); level = 1 - level, ++flips) {
                if (random() % 64 == 0) {
                    std::filesystem::remove(m_Files.line(0, bit));
                }
                m_Files.addLine(0, bit, level);
            }
        });
    }
    for (const bool isInPlace : {false, true}) {
        threads.emplace_back([&, isInPlace] {
            while (goesOn()) {
                Story story;
                auto own = isInPlace ? board.onInput(nvrhw::inPlace, std::ref(story))
                                     : board.onInput(std::ref(story));
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
                own.end();
                faults += story.faults;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (int bit = 0; bit < LINES; ++bit) {
        const nvrhw::Input::State is =
            m_Files.level(0, bit) == 1 ? nvrhw::Input::Alarm : nvrhw::Input::Normal;
        for (int i = 0; i < 10000 && (first.last[bit] != is || inPlace.last[bit] != is); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        EXPECT_EQ(first.last[bit], is) << bit;
        EXPECT_EQ(inPlace.last[bit], is) << bit;
    }
    EXPECT_EQ(first.faults + inPlace.faults + faults, 0U);
    EXPECT_GT(flips, 100U);
}

} // namespace
