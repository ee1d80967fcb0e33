#include "platform/MonitorParam.h"

#include "support/CapturedLog.h"
#include "support/TempDir.h"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <thread>

namespace {

namespace fs = std::filesystem;

MonitorParam param(int id, int size) {
    MonitorParam made;
    made.setMonitorId(id);
    made.setWidth(size);
    made.setHeight(size);
    return made;
}

class MonitorParams : public testing::Test {
protected:
    /// The store refuses the record, with this cause, and leaves the file alone.
    void expectRefusal(MonitorParamConfig& store, const MonitorParam& param,
                       const std::string& cause) {
        const std::string before = TempDir::read(m_Path);
        CapturedLog log;
        EXPECT_EQ(store.setMonitorParam(param), 0) << cause;
        EXPECT_EQ(log.take(), std::vector<std::string>{"MonitorParam: " + cause});
        EXPECT_EQ(TempDir::read(m_Path), before);
        EXPECT_FALSE(fs::exists(m_Path + ".tmp"));
    }

    TempDir m_Dir;
    std::string m_Path = m_Dir.path("p.xml");
    MonitorParamConfig m_Store{1, m_Path};
    MonitorParam m_Param;
    std::vector<MonitorParam> m_All;
};

TEST_F(MonitorParams, ReplacesOneRecordAndKeepsTheRest) {
    constexpr char VALUES[] = R"( type="-1" resolutionId="2" x="-3" y="4" width="5" height="6" )"
                              R"(refreshRate="7" brightness="8" enabled="true" />)";
    constexpr char HEAD[] = R"(<?xml version="1.0"?>
<!-- head -->
<Any since="1">
    <Monitor>
        <item monitorId="2" other="a &amp; b")";
    const std::string rest = std::string(R"(
        <!-- between -->
        <item monitorId="2" />
        <Unknown>
            <x />text</Unknown>
        <item monitorId="3")") +
                             VALUES;
    const std::string end = "\n    </Monitor>\n</Any>\n";
    m_Dir.write("p.xml", HEAD + (" />" + rest) + end);
    fs::permissions(m_Path, fs::perms(0640));
    fs::create_directory(m_Dir.path("sub"));
    fs::create_symlink("../p.xml", m_Dir.path("sub/link.xml"));
    MonitorParamConfig store(1, m_Dir.path("sub/link.xml"));
    ASSERT_NE(store.getMonitorType(3, m_Param), 0);
    m_Param.setMonitorId(2);
    EXPECT_NE(store.setMonitorParam(m_Param), 0);
    m_Param.setMonitorId(-9);
    EXPECT_NE(store.setMonitorParam(m_Param), 0);
    EXPECT_EQ(TempDir::read(m_Path), std::string(HEAD) + VALUES + rest +
                                         "\n        <item monitorId=\"-9\"" + VALUES + end);
    EXPECT_TRUE(fs::is_symlink(m_Dir.path("sub/link.xml")));
    EXPECT_EQ(fs::status(m_Path).permissions(), fs::perms(0640));
}

TEST_F(MonitorParams, CreatesTheFileAndRefusesValuesOutOfRange) {
    EXPECT_NE(m_Store.getAllMonitorParam(m_All), 0) << "a missing file is an empty store";
    EXPECT_NE(m_Store.setMonitorParam(param(1, 1)), 0);
    const struct {
        const char* name;
        void (MonitorParam::*set)(int);
        int value;
        const char* highest;
    } cases[] = {
        {"brightness", &MonitorParam::setBrightness, 101, "100"},
        {"brightness", &MonitorParam::setBrightness, -1, "100"},
        {"width", &MonitorParam::setWidth, -1, "2147483647"},
        {"height", &MonitorParam::setHeight, -1, "2147483647"},
        {"refreshRate", &MonitorParam::setRefreshRate, -1, "2147483647"},
        {"resolutionId", &MonitorParam::setResolutionId, -1, "2147483647"},
    };
    for (const auto& row : cases) {
        MonitorParam bad = param(1, 2);
        (bad.*row.set)(row.value);
        expectRefusal(m_Store, bad,
                      m_Path + ": monitor 1: " + row.name + " must be from 0 to " + row.highest +
                          ", not " + std::to_string(row.value));
    }
    MonitorParamConfig otherLayout(2, m_Path);
    expectRefusal(otherLayout, m_Param, m_Path + ": there is no layout 2");
    const std::string lost = m_Dir.path("no/p.xml");
    MonitorParamConfig lostStore(1, lost);
    expectRefusal(lostStore, m_Param, lost + ": its folder: No such file or directory");
    CapturedLog log;
    EXPECT_EQ(lostStore.getMonitorType(0, m_Param) + lostStore.getAllMonitorParam(m_All), 0);
    EXPECT_EQ(log.take().size(), 2U);
}

TEST_F(MonitorParams, AFailedWriteLeavesTheOldFile) {
    m_Dir.write("p.xml", "<M><Monitor/><!--" + std::string(16 * 1024, 'x') + "--></M>");
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit small{8 * 1024, limit.rlim_max};
    std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    expectRefusal(m_Store, param(1, 1), m_Path + ": File too large");
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    std::signal(SIGXFSZ, SIG_DFL);

    m_Dir.write("p.xml.tmp", "left by a power cut");
    EXPECT_NE(m_Store.setMonitorParam(param(1, 1)), 0);
    EXPECT_FALSE(fs::exists(m_Path + ".tmp"));
}

TEST_F(MonitorParams, WritersLoseNothingAndReadersSeeWholeFiles) {
    constexpr int WRITERS = 4;
    constexpr int WRITES = 50;
    std::atomic<int> running{WRITERS};
    std::vector<std::thread> threads;
    for (int writer = 0; writer < WRITERS; ++writer) {
        threads.emplace_back([&, writer] {
            MonitorParamConfig own(1, m_Path); // as another process would; two writers share one
            MonitorParamConfig& store = writer < 2 ? m_Store : own;
            for (int i = 0; i < WRITES; ++i) {
                EXPECT_NE(store.setMonitorParam(param(writer * 10 + i % 10, i)), 0);
            }
            --running;
        });
    }
    std::size_t least = 0;
    while (running > 0) {
        EXPECT_NE(m_Store.getAllMonitorParam(m_All), 0);
        EXPECT_GE(m_All.size(), least);
        least = m_All.size();
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_NE(m_Store.getAllMonitorParam(m_All), 0);
    EXPECT_EQ(m_All.size(), WRITERS * 10U);
    for (const MonitorParam& last : m_All) {
        EXPECT_EQ(last.getWidth(), WRITES - 10 + last.getMonitorId() % 10);
    }
}

} // namespace
