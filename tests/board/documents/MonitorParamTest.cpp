#include "platform/MonitorParam.h"

#include "support/DocumentTest.h"

#include <csignal>
#include <future>
#include <sys/resource.h>

namespace {

namespace fs = std::filesystem;

class MonitorParams : public DocumentTest {
protected:
    static MonitorParam param(int id, int width = 0) {
        MonitorParam made;
        made.setMonitorId(id);
        made.setWidth(width);
        return made;
    }

    /// The store refuses the record, with this cause, and leaves the file alone.
    void expectRefusal(MonitorParamConfig& store, const MonitorParam& param,
                       const std::string& cause) {
        const std::string before = read("/p.xml");
        EXPECT_EQ(store.setMonitorParam(param), 0);
        expectRecord("MonitorParam: " + cause);
        EXPECT_EQ(read("/p.xml"), before);
        EXPECT_FALSE(fs::exists(m_Path + ".tmp"));
    }

    const std::string m_Path = real("/p.xml");
    MonitorParamConfig m_Store{1, "/p.xml"};
    MonitorParam m_Param;
    std::vector<MonitorParam> m_All;
};

TEST_F(MonitorParams, ReplacesOneRecordAndKeepsTheRest) {
    write("/p.xml", read("/monitors/before.xml"));
    fs::permissions(m_Path, fs::perms(0640));
    fs::create_symlink("../p.xml", real("/monitors/link.xml"));
    MonitorParamConfig store(1, "/monitors/link.xml");
    ASSERT_NE(store.getMonitorType(2, m_Param), 0);
    EXPECT_EQ(m_Param.getBrightness(), 50) << "a value that stands nowhere";
    ASSERT_NE(store.getMonitorType(3, m_Param), 0);
    for (const int id : {2, -9}) {
        m_Param.setMonitorId(id);
        EXPECT_NE(store.setMonitorParam(m_Param), 0);
    }
    EXPECT_EQ(read("/p.xml"), read("/monitors/after.xml"));
    EXPECT_TRUE(fs::is_symlink(real("/monitors/link.xml")));
    EXPECT_EQ(fs::status(m_Path).permissions(), fs::perms(0640));
}

TEST_F(MonitorParams, CreatesTheFileAndRefusesValuesOutOfRange) {
    EXPECT_NE(m_Store.getAllMonitorParam(m_All), 0) << "a missing file is an empty store";
    EXPECT_NE(m_Store.setMonitorParam(param(1)), 0);
    expectRefusal(m_Store, param(1, -1),
                  m_Path + ": monitor 1: width must be from 0 to 2147483647, not -1");
    MonitorParamConfig otherLayout(2, "/p.xml");
    expectRefusal(otherLayout, m_Param, m_Path + ": there is no layout 2");
    MonitorParamConfig lost(1, "/no/p.xml");
    expectRefusal(lost, m_Param, real("/no/p.xml: its folder: No such file or directory"));
}

TEST_F(MonitorParams, AFailedWriteLeavesTheOldFile) {
    write("/p.xml", "<M><Monitor/><!--" + std::string(16 * 1024, 'x') + "--></M>");
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit small{8 * 1024, limit.rlim_max};
    std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    expectRefusal(m_Store, param(1), m_Path + ": File too large");
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    std::signal(SIGXFSZ, SIG_DFL);

    const std::string around = "<M><Monitor/><!----></M>";
    write("/p.xml", std::string(around).insert(17, 16 * 1024 * 1024 - around.size(), 'x'));
    EXPECT_NE(m_Store.getAllMonitorParam(m_All), 0) << "as large as a file may be";
    expectRefusal(m_Store, param(1), m_Path + ": File too large");

    write("/p.xml", around);
    write("/p.xml.tmp", "left by a power cut");
    EXPECT_NE(m_Store.setMonitorParam(param(1)), 0);
    EXPECT_FALSE(fs::exists(m_Path + ".tmp"));
}

TEST_F(MonitorParams, WritersLoseNothingAndReadersSeeWholeFiles) {
    constexpr int WRITERS = 4;
    constexpr int WRITES = 50;
    std::vector<std::future<void>> writers;
    for (int writer = 0; writer < WRITERS; ++writer) {
        writers.push_back(std::async(std::launch::async, [&, writer] {
            MonitorParamConfig own(1, "/p.xml"); // as another process would; two writers share one
            MonitorParamConfig& store = writer < 2 ? m_Store : own;
            for (int i = 0; i < WRITES; ++i) {
                EXPECT_NE(store.setMonitorParam(param(writer * 10 + i % 10, i)), 0);
            }
        }));
    }
    for (const std::future<void>& writer : writers) {
        while (writer.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
            const std::size_t least = m_All.size();
            EXPECT_NE(m_Store.getAllMonitorParam(m_All), 0);
            EXPECT_GE(m_All.size(), least);
        }
    }
    EXPECT_NE(m_Store.getAllMonitorParam(m_All), 0);
    EXPECT_EQ(m_All.size(), WRITERS * 10U);
    for (const MonitorParam& last : m_All) {
        EXPECT_EQ(last.getWidth(), WRITES - 10 + last.getMonitorId() % 10);
    }
}

} // namespace
