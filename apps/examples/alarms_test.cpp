// How an application is tested: against a board that is a directory, whose lines are files. A test
// does to the files what happens to lines in the field. Boards are opened one after the other, in
// one process:
//
//     alarms_test --gtest_repeat=2
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <nvrhw/nvrhw.h>
#include <thread>

using namespace std::chrono_literals;
namespace fs = std::filesystem;

/// The application under test: the siren is on while the door is open, or its line is cut.
class Guard {
public:
    explicit Guard(const nvrhw::Board& board)
        : m_Siren(board.output("siren")),
          m_Watch(board.onInput([this](const nvrhw::InputChange& change) { update(change); },
                                board.input("door").id)) {}

private:
    void update(const nvrhw::InputChange& change) {
        change.state == nvrhw::Input::Normal ? m_Siren.rest() : m_Siren.flash(500ms);
    }

    nvrhw::Output m_Siren;
    nvrhw::Registration m_Watch; // the last member: it ends before what its callback uses
};

/// A board of two lines.
class GuardTest : public testing::Test {
protected:
    GuardTest() {
        std::string name = (fs::temp_directory_path() / "board-XXXXXX").string();
        m_Root = mkdtemp(name.data());
        write("hd1/program/config/hardwareConfig.xml", R"(<HardwareConfig><GPIOAlarmIn>
            <item id="1" group="0" bitPosition="0" validLevel="1" name="door"/>
            </GPIOAlarmIn><GPIOAlarmOut>
            <item id="1" group="0" bitPosition="1" validLevel="1" name="siren"/>
            </GPIOAlarmOut></HardwareConfig>)");
        write(DOOR, "0");
        write(SIREN, "0");
    }
    ~GuardTest() override { fs::remove_all(m_Root); }

    void write(const char* file, const char* text) const {
        fs::create_directories((m_Root / file).parent_path());
        std::ofstream(m_Root / file) << text;
    }

    nvrhw::BoardOptions options() const {
        nvrhw::BoardOptions options;
        options.directory = m_Root;
        options.linesOnly = true; // there are no other documents
        return options;
    }

    static bool comesTrue(const std::function<bool()>& condition) {
        for (int i = 0; i < 1000 && !condition(); ++i) {
            std::this_thread::sleep_for(10ms);
        }
        return condition();
    }

    static constexpr char DOOR[] = "dev/gpiodrv/0/0", SIREN[] = "dev/gpiodrv/0/1";
    fs::path m_Root;
};

TEST_F(GuardTest, TheSirenFlashesWhileTheDoorIsOpen) {
    write(DOOR, "1"); // before the application starts
    const nvrhw::Board board(options());
    const Guard guard(board);
    const auto siren = board.output("siren");
    EXPECT_TRUE(comesTrue([&] { return siren.state().operation == nvrhw::Output::Flash; }));
    write(DOOR, "0");
    EXPECT_TRUE(comesTrue([&] { return siren.state().operation == nvrhw::Output::None; }));
    EXPECT_FALSE(siren.state().isActive);
}

TEST_F(GuardTest, ACutCableIsAnAlarmUntilItIsMended) {
    const nvrhw::Board board(options());
    const Guard guard(board);
    const auto door = board.input("door");
    const auto siren = board.output("siren");
    fs::remove(m_Root / DOOR); // torn off
    EXPECT_TRUE(comesTrue([&] { return door.state() == nvrhw::Input::Unreadable; }));
    EXPECT_EQ(door.cause().error, ENOENT);
    EXPECT_TRUE(comesTrue([&] { return siren.state().operation == nvrhw::Output::Flash; }));
    write(DOOR, "0"); // repaired
    EXPECT_TRUE(comesTrue([&] { return siren.state().operation == nvrhw::Output::None; }));
}

TEST_F(GuardTest, ABoardWithoutASirenIsRefused) {
    write("hd1/program/config/hardwareConfig.xml",
          "<HardwareConfig><GPIOAlarmIn/><GPIOAlarmOut/></HardwareConfig>");
    const nvrhw::Board board(options());
    try {
        const Guard guard(board);
        FAIL() << "it started";
    } catch (const nvrhw::Error& error) {
        EXPECT_EQ(error.code(), nvrhw::Error::NoSuchLine);
        EXPECT_STREQ(error.what(), "there is no output \"siren\"; there are none");
    }
}
