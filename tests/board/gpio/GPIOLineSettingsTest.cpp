#include "platform/Gpio.h"
#include "platform/GpioDetect.h"
#include "platform/HardwareConfigure.h"
#include "platform/System.h"
#include "support/Gate.h"
#include "support/LogCapture.h"
#include "support/SimulatedBoard.h"

namespace {

/// A detector over line 0, debounced, and line 1 of a simulated bank. Its handler reads both.
class GPIOLineSettingsTest : public testing::Test {
protected:
    GPIOLineSettingsTest() {
        s_Current = this;
        m_Board.addLine(0, 0);
        m_Board.addLine(0, 1);
    }
    ~GPIOLineSettingsTest() noexcept override { configure(""); } // for the tests to come

    /// Reads a configuration of line 0 with these settings.
    int configure(const std::string& settings) {
        std::ofstream(m_Board.root() / "lines.xml")
            << R"(<H><In><item id="1" group="0" bitPosition="0" validLevel="1" )" << settings
            << "/></In></H>";
        GPIOSignalConfigure reader;
        reader.setConfigName("In");
        reader.setConfigFileName("/lines.xml");
        return reader.getConfig(m_List);
    }

    static void handle(int /*signalNumber*/) {
        int levels[2] = {-1, -1};
        for (const int bit : {0, 1}) {
            EXPECT_NE(s_Current->m_Gpio.get(0, bit, levels[bit]), 0);
        }
        const std::lock_guard<std::mutex> guard(s_Current->m_Mutex);
        s_Current->m_Seen += std::to_string(levels[0]) + std::to_string(levels[1]) + ' ';
        s_Current->m_Calls.open();
    }

    /// Waits for a call that has seen these levels; what all calls until then have seen.
    std::string seenUntil(const std::string& levels) {
        for (int calls = 1;; ++calls) {
            EXPECT_TRUE(m_Calls.wait(calls));
            const std::lock_guard<std::mutex> guard(m_Mutex);
            if (m_Seen.find(levels) != std::string::npos || testing::Test::HasFailure()) {
                return m_Seen;
            }
        }
    }

    static inline GPIOLineSettingsTest* s_Current = nullptr;

    SimulatedBoard m_Board;
    SafePointer<HardwareConfigItemList> m_List;
    GPIO m_Gpio;
    Gate m_Calls;
    std::mutex m_Mutex;
    std::string m_Seen;
};

TEST_F(GPIOLineSettingsTest, AnItemCarriesThem) {
    ASSERT_NE(configure(R"(name="A &amp; B" debounce="9" bias="disabled" drive="open-source")"), 0);
    const auto item = m_List->getHardwareConfigItemList().front();
    const auto& settings = dynamic_pointer_cast<GPIOSignalConfigItem>(item)->getSettings();
    EXPECT_EQ(settings.name, "A & B");
    EXPECT_EQ(settings.debounce, 9);
    EXPECT_EQ(settings.bias, GPIOLineSettings::BIAS_DISABLED);
    EXPECT_EQ(settings.drive, GPIOLineSettings::OPEN_SOURCE);
}

TEST_F(GPIOLineSettingsTest, ASimulatedLineChangesWhenItsLevelHasHeld) {
    namespace fs = std::filesystem;
    const int pid = SystemHelper::getPid();
    fs::last_write_time(m_Board.line(0, 0),
                        fs::file_time_type::clock::now() - std::chrono::hours(1));
    ASSERT_NE(configure(R"(debounce="10000")"), 0);
    GPIODetect detector;
    ASSERT_NE(m_Gpio.init(), 0);
    ASSERT_EQ(detector.open() + detector.setSignalHandler(10, handle), 0);
    for (const int bit : {0, 1}) {
        ASSERT_EQ(detector.addDetectLine(pid, 0, bit), 0);
    }
    handle(0);
    ASSERT_EQ(detector.startDetect(), 0);
    m_Board.setLevel(0, 0, 1); // a glitch, in which line 1 makes the handler read
    m_Board.setLevel(0, 1, 1);
    const std::string seen = seenUntil("01"); // one write may be told in several calls
    EXPECT_TRUE(seen.find("10") == std::string::npos && seen.find("11") == std::string::npos)
        << seen;
    m_Board.setLevel(0, 0, 0);

    ASSERT_NE(configure(R"(debounce="100")"), 0);
    ASSERT_EQ(detector.removeDetectLine(pid, 0, 0) + detector.addDetectLine(pid, 0, 0), 0);
    const auto begin = std::chrono::steady_clock::now();
    m_Board.setLevel(0, 0, 1); // and a level that stays
    seenUntil("11");
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(100));
    detector.stopDetect();
    EXPECT_NE(m_Gpio.set(0, 0, 0), 0);
    handle(0);
    EXPECT_EQ(m_Seen.substr(m_Seen.size() - 3), "01 ") << "what is driven does not bounce";
}

} // namespace
