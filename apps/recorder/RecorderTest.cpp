// The recorder on a copy of the sample board whose lines come and go.
#include "Recorder.h"

#include <condition_variable>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <mutex>
#include <regex>

namespace fs = std::filesystem;

class RecorderTest : public testing::Test {
protected:
    RecorderTest() {
        std::string name = (fs::temp_directory_path() / "recorder-XXXXXX").string();
        m_Root = mkdtemp(name.data());
        fs::copy(NVRHW_SAMPLE_BOARD, m_Root, fs::copy_options::recursive);
    }
    ~RecorderTest() override { fs::remove_all(m_Root); }

    void report(const std::string& line) {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_Text += line + '\n';
        m_Added.notify_all();
    }

    /// Waits for a line that this is found in; what came up to now is then forgotten.
    bool isTold(const std::string& pattern) {
        std::unique_lock<std::mutex> lock(m_Mutex);
        const bool isThere = m_Added.wait_for(lock, std::chrono::seconds(10), [&] {
            return std::regex_search(m_Text, std::regex(pattern));
        });
        m_Text.clear();
        return isThere;
    }

    std::vector<std::string> m_Rules{"front door:siren:hold"};
    const Recorder::Report m_Report = [this](const std::string& line) { report(line); };
    fs::path m_Root;

private:
    std::mutex m_Mutex;
    std::condition_variable m_Added;
    std::string m_Text;
};

TEST_F(RecorderTest, SwitchesAnOutputByItsRuleAlsoWhenALineVanishes) {
    const nvrhw::Board board(m_Root);
    const auto siren = board.output("siren");
    const Recorder recorder(board, m_Rules, m_Report);
    const fs::path line = m_Root / "dev/gpiodrv/0/0";
    EXPECT_TRUE(isTold(R"("input":16,.*"state":"normal")"));

    fs::remove(line);
    EXPECT_TRUE(isTold(
        R"("cause":".*0/0: No such file.*"input":1,.*"state":"unreadable"[^]*"state":"hold began")"));
    EXPECT_TRUE(siren.state().isActive);
    std::ofstream(line) << "0";
    EXPECT_TRUE(isTold(R"("input":1,.*"state":"normal"[^]*"output":4,.*"state":"hold ended")"));
    EXPECT_FALSE(siren.state().isActive);
    std::ofstream(line) << "1";
    EXPECT_TRUE(isTold(R"("input":1,.*"state":"alarm"[^]*"state":"hold began")"));
    EXPECT_TRUE(siren.state().isActive);
}

TEST_F(RecorderTest, RefusesWhatIsNoRule) {
    const nvrhw::Board board(m_Root);
    for (const char* rule : {"front door", "1:siren:blink", "1:sirene:hold", "17:siren:hold"}) {
        EXPECT_THROW(Recorder(board, {rule}, m_Report), nvrhw::Error) << rule;
    }
}
