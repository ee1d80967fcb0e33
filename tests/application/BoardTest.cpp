// A board as an application opens it: what stands in the way, its outputs, and the factory's.
#include "alarm/IOAlarmInManager.h"
#include "alarm/IOAlarmOutManager.h"
#include "service/HardwareServiceFactory.h"
#include "support/AlarmRecorder.h"
#include "support/Allocations.h"
#include "support/ChangeRecorder.h"
#include "support/LogCapture.h"
#include "support/ManualClock.h"
#include "support/ServiceTest.h"

#include <atomic>
#include <functional>
#include <optional>
#include <thread>

using namespace std::chrono_literals;
using nvrhw::Board;
using nvrhw::BoardOptions;
using nvrhw::Error;
using nvrhw::Output;

namespace {

std::string ABILITIES = "/hd1/program/config/NVRAbility.xml";

class BoardTest : public ServiceTest {
protected:
    static Error errorOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const Error& error) {
            return error;
        }
        ADD_FAILURE() << "no error";
        return {Error::Closed, ""};
    }

    SimulatedBoard& m_Files = m_Board;
    LogCapture m_Log;
};

TEST_F(BoardTest, OpensOneAfterTheOtherAndTellsOfItsDocuments) {
    const std::string root = m_Files.root();
    const std::string before = "/"; // no board
    GlobalEnv::getInstance()->setRootDirectory(before);
    for (int round = 0; round < 2; ++round) {
        const Board board(root);
        EXPECT_EQ(board.directory(), root);
        EXPECT_EQ(board.machine().getModel(), "Thirty-Two Channel Sample");
        EXPECT_FALSE(board.software().getVersion().empty());
        EXPECT_EQ(board.abilities().getAlarmInDeviceNumber(), 16);
        EXPECT_EQ(board.inputs().size(), 16U);
        EXPECT_EQ(board.outputs().size(), 4U);
        EXPECT_EQ(board.lines().back().purpose, nvrhw::LineUse::AlarmOutput);
        EXPECT_EQ(board.input("front door").id, 1);
        EXPECT_EQ(board.output("siren").id, 4);

        auto monitors = board.monitors();
        ASSERT_FALSE(monitors.empty());
        monitors.front().setBrightness(30 + round);
        EXPECT_TRUE(board.setMonitor(monitors.front()));
        EXPECT_EQ(board.monitors().front().getBrightness(), 30 + round);
        monitors.front().setBrightness(1000);
        const nvrhw::Result refused = board.setMonitor(monitors.front());
        ASSERT_FALSE(refused);
        EXPECT_EQ(refused.error().causes().at(0).what,
                  "monitor 0: brightness must be from 0 to 100, not 1000");
        EXPECT_EQ(errorOf([&] { Board{root}; }).code(), Error::Busy);
    }
    EXPECT_EQ(GlobalEnv::getInstance()->getRootDirectory(), before);
    GlobalEnv::getInstance()->setRootDirectory(root);
}

TEST_F(BoardTest, WhatIsWrongIsRaisedWithEveryCause) {
    const auto expectCauses = [&](const std::vector<std::string>& wanted) {
        const Error error = errorOf([] { Board{}; });
        EXPECT_EQ(error.code(), Error::BadBoard);
        ASSERT_EQ(error.causes().size(), wanted.size()) << error.what();
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            EXPECT_EQ(error.causes()[i].text(), m_Files.root().string() + wanted[i]);
        }
    };
    m_Files.writeFile(ABILITIES, "<NVRAbility>\n<ChannelAbility channelNumber='many'/>");
    std::filesystem::rename(m_Files.device(), m_Files.root() / "away");
    expectCauses({"/dev/gpiodrv: GPIO device: No such file or directory",
                  ABILITIES + ":2: device ability: Start-end tags mismatch"});
    EXPECT_EQ(errorOf([] { Board("/nowhere"); }).causes().at(0).error, ENOENT);

    std::filesystem::rename(m_Files.root() / "away", m_Files.device());
    BoardOptions options;
    options.linesOnly = true;
    EXPECT_EQ(Board(options).inputs().size(), 16U);
    std::filesystem::remove_all(m_Files.bank(1));
    EXPECT_EQ(Board(options).input(16).state(), nvrhw::Input::Unreadable);
    EXPECT_EQ(m_Log.take().find("ability"), std::string::npos);
}

TEST_F(BoardTest, WhatCannotBeMeantIsRaised) {
    const Board board;
    const auto siren = board.output("siren");
    const struct {
        std::function<void()> action;
        Error::Code code;
        const char* part;
    } cases[] = {
        {[&] { static_cast<void>(board.output("sirene")); }, Error::NoSuchLine,
         "there is no output \"sirene\"; there are 1, 2, 3, 4 (siren)"},
        {[&] { static_cast<void>(board.input(17)); }, Error::NoSuchLine, "there is no input 17;"},
        {[&] { siren.flash(99ms); }, Error::BadArgument, "a period of 99 ms: it is 100 to"},
        {[&] { siren.flash(500ms, 0ms); }, Error::BadArgument, "a time of 0 ms: it is 1 to"},
        {[&] { siren.hold(-1s); }, Error::BadArgument, "a time of -1000 ms"},
        {[&] { siren.hold(2147484ms); }, Error::BadArgument, "to 2147483 ms"},
    };
    for (const auto& [action, code, part] : cases) {
        const Error error = errorOf(action);
        EXPECT_EQ(error.code(), code) << part;
        EXPECT_NE(std::string(error.what()).find(part), std::string::npos) << error.what();
    }
}

TEST_F(BoardTest, OutputsDoWhatTheyAreToldAndTellIt) {
    const ManualClock clock(ManualClock::MOVES_FOR_ALL);
    std::optional<Board> board(std::in_place);
    ChangeRecorder told, drives;
    const auto operations = board->onOutput(std::ref(told));
    const auto levels = board->onDrive(std::ref(drives));
    const auto output = board->output(3); // active at level 0
    const int active = output.line.validLevel;

    EXPECT_TRUE(output.flash(180ms, 330ms)); // never just on the grid of 50 ms
    EXPECT_EQ(told.takeUpTo("ended "), "3:flash began 3:flash ended ");
    std::string all = "3:flash began ";
    for (const int state : {1, 0, 1, 0}) {
        all += "3:flash driven " + std::to_string(state != 0 ? active : 1 - active) + " ";
    }
    EXPECT_EQ(drives.takeUpTo("ended "), all + "3:flash ended ");
    EXPECT_TRUE(output.hold());
    nvrhw::OutputState state = output.state();
    EXPECT_TRUE(state.isActive && state.agrees && !state.remaining && !state.failure);
    EXPECT_EQ(state.operation, Output::Hold);
    EXPECT_TRUE(output.pulse());
    EXPECT_EQ(output.state().operation, Output::None);
    EXPECT_EQ(told.takeUpTo("pulse ended "),
              "3:hold began 3:hold replaced 3:pulse began 3:pulse ended ");
    EXPECT_TRUE(output.hold());
    EXPECT_TRUE(output.rest());
    EXPECT_TRUE(output.rest());
    EXPECT_EQ(told.takeUpTo("ended "), "3:hold began 3:hold ended ");

    output.setInverted(true);
    EXPECT_TRUE(output.hold());
    EXPECT_EQ(m_Files.level(output.line.bank, output.line.bit), 1 - active);
    EXPECT_TRUE(output.state().isActive);
    m_Files.setLevel(output.line.bank, output.line.bit, active); // somebody else
    EXPECT_FALSE(output.state().agrees);
    board.reset();
    EXPECT_EQ(output.hold().error().code(), Error::Closed);
}

TEST_F(BoardTest, ALineThatCannotBeDrivenIsAResultAStateAndOneChange) {
    const Board board;
    ChangeRecorder told;
    const auto watch = board.onOutput(std::ref(told));
    const auto output = board.output(1);
    const auto line = m_Files.line(output.line.bank, output.line.bit);
    std::filesystem::rename(line, m_Files.root() / "away");
    for (int round = 0; round < 2; ++round) {
        const nvrhw::Result result = output.hold();
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().code(), Error::NotDriven);
        EXPECT_EQ(result.error().causes().at(0).where, line);
        EXPECT_EQ(result.error().causes().at(0).error, ENOENT);
    }
    EXPECT_EQ(output.state().failure->code(), Error::NotDriven);
    std::filesystem::rename(m_Files.root() / "away", line);
    EXPECT_TRUE(output.hold());
    EXPECT_FALSE(output.state().failure);
    EXPECT_EQ(
        told.takeUpTo("1:hold replaced 1:hold began 1:hold replaced 1:hold began "),
        "1:hold began 1:hold failed 1:hold replaced 1:hold began 1:hold replaced 1:hold began ");
}

TEST_F(BoardTest, AtItsEndOutputsAreLeftOrPutToRest) {
    const struct {
        BoardOptions::AtEnd atEnd;
        bool isHeld, isTimed;
    } cases[] = {{BoardOptions::RestUnfinished, true, false},
                 {BoardOptions::RestAll, false, false},
                 {BoardOptions::LeaveAll, true, true}};
    for (const auto& [atEnd, isHeld, isTimed] : cases) {
        BoardOptions options;
        options.atEnd = atEnd;
        std::optional<Board> board(options);
        const auto held = board->output(1);
        const auto timed = board->output(2);
        EXPECT_TRUE(held.hold());
        EXPECT_TRUE(timed.hold(60s));
        EXPECT_LE(*timed.state().remaining, 60s);
        board.reset();
        const auto isActive = [&](const Output& output) {
            return m_Files.level(output.line.bank, output.line.bit) == output.line.validLevel;
        };
        EXPECT_EQ(isActive(held), isHeld) << atEnd;
        EXPECT_EQ(isActive(timed), isTimed) << atEnd;
    }
}

TEST_F(BoardTest, NobodyDrivesAfterTheOutputsWerePutToRest) {
    for (int round = 0; round < 10; ++round) {
        std::optional<Board> board(std::in_place);
        const auto output = board->output("siren");
        std::atomic<bool> hasBegun{false};
        std::thread driver([&] {
            while (output.flash(100ms)) {
                hasBegun = true;
            }
        });
        while (!hasBegun) {
            std::this_thread::yield();
        }
        board.reset();
        driver.join();
        EXPECT_EQ(m_Files.level(output.line.bank, output.line.bit), 1 - output.line.validLevel);
    }
}

TEST_F(BoardTest, IsLookedAtWithoutBeingWatchedAndBesideAFactory) {
    BoardOptions options;
    options.watch = false;
    {
        const Board board(options);
        const auto input = board.input(1);
        EXPECT_EQ(input.state(), nvrhw::Input::Normal);
        m_Files.setLevel(0, 0, 1);
        EXPECT_EQ(board.input(1).level(), 1);
        const auto ignore = [](const nvrhw::InputChange&) {};
        EXPECT_EQ(errorOf([&] { static_cast<void>(board.onInput(ignore)); }).code(),
                  Error::BadArgument);
    }
    const Board board;
    ChangeRecorder told;
    const auto watch = board.onInput(std::ref(told), 1);
    Factory factory;
    factory.start();
    told.takeUpTo("1~alarm ");
    m_Files.setLevel(0, 0, 0);
    EXPECT_EQ(told.takeUpTo("1=normal "), "1=normal ");
    factory.stop();
}

// The factory is the process's, with a board that outlives the tests.
class FactorysBoardTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        s_Files.emplace(NVRHW_SAMPLE_BOARD);
        EXPECT_THROW(Board::running(), Error);
        s_Factory->start();
    }
    static void TearDownTestSuite() { s_Files.reset(); }

    template <typename T> static T& service(const char* name) {
        return *dynamic_cast<SafePointer<T>&>(*s_Factory->getService(name)).operator->();
    }

    static inline std::optional<SimulatedBoard> s_Files{};
    static inline HardwareServiceFactory* const s_Factory = HardwareServiceFactory::getInstance();
};

TEST_F(FactorysBoardTest, SharesItsServicesAndCostsNoAllocation) {
    auto& inputs = service<IOAlarmInManager>("IOAlarmInManager");
    auto& outputs = service<IOAlarmOutManager>("IOAlarmOutManager");
    const auto costOfChanges = [&] {
        const long before = allocations;
        for (int i = 0; i < 4; ++i) {
            s_Files->setLevel(0, 2, i % 2);
            inputs.notifyAlarmConsumers(false);
        }
        return allocations - before;
    };
    {
        outputs.setAlarmOutMode(2, {AlarmOutMode::Flash, AlarmOutMode::Direct, 60000, 2.0F});
        outputs.triggerAlarm(2);
        const Board board = Board::running();
        EXPECT_EQ(board.output(2).state().operation, Output::Flash) << "it runs already";
        EXPECT_GT(*board.output(2).state().remaining, 50s);
        outputs.cancelAlarm(2);
        s_Factory->stop(); // from here on this thread is the one that looks
        costOfChanges();
        const long without = costOfChanges();
        ChangeRecorder told;
        const auto watch = board.onOutput(std::ref(told));
        AlarmRecorder messages;
        const int id = inputs.addListener(&messages);
        outputs.triggerAlarm(1);
        EXPECT_EQ(told.takeUpTo("began "), "1:hold began ");
        inputs.removeListener(id);

        std::atomic<int> changes{0};
        const auto count = [&](const nvrhw::InputChange&) { ++changes; };
        const auto inPlace = board.onInput(nvrhw::inPlace, count);
        const auto dispatched = board.onInput(count);
        while (changes < 32) {
            std::this_thread::yield();
        }
        costOfChanges();
        while (changes < 40) {
            std::this_thread::yield();
        }
        const long with = costOfChanges();
        while (changes < 48) {
            std::this_thread::yield();
        }
        EXPECT_EQ(with, without);
    }
    EXPECT_TRUE(s_Files->level(1, 0) == 1) << "the factory's outputs are left";
}

} // namespace
