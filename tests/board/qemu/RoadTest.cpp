#include "alarm/IOAlarmOutManager.h"
#include "board/qemu/SimChip.h"
#include "platform/Insight.h"
#include "support/AlarmRecorder.h"
#include "support/ChangeRecorder.h"
#include "support/EdgeRoad.h"
#include "support/LogCapture.h"

#include <algorithm>
#include <csignal>
#include <thread>

namespace {

class Recorder : public Factory {
public:
    Recorder() { start(); }
    IOAlarmOutManager& outputs() { return get<IOAlarmOutManager>("IOAlarmOutManager"); }
};

/// A recorder on the sample board, whose banks are chips of the kernel: from the wire to the
/// application's listener, and from the application's call to the wire.
class RoadTest : public ServiceTest {
protected:
    RoadTest() {
        for (int group = 0; group < 3; ++group) {
            m_Chips[group].linkAs(m_Board.root(), group);
        }
    }

    void pull(unsigned id, bool alarm) {
        m_Chips[(id - 1) / 8].pull((id - 1) % 8, alarm == (INPUTS[id - 1] == '1'));
    }

    /// The milliseconds between the changes of output 1's wire, looked at for so long.
    std::vector<long> gaps(int milliseconds) const {
        using Clock = std::chrono::steady_clock;
        std::vector<long> found;
        const auto start = Clock::now();
        auto last = start;
        bool level = m_Chips[2].value(0);
        while (Clock::now() - start < std::chrono::milliseconds(milliseconds)) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1)); // the kernel tells nobody
            if (m_Chips[2].value(0) != level) {
                level = !level;
                const auto gap = Clock::now() - last;
                last += gap;
                found.push_back(static_cast<long>(gap / std::chrono::milliseconds(1)));
            }
        }
        return found;
    }

    SimChip m_Chips[3] = {{"bank0", 8}, {"bank1", 8}, {"bank2", 4}};
};

TEST_F(RoadTest, EveryContactReachesTheListenerAndSoDoesAChipThatComesBack) {
    Recorder recorder;
    for (unsigned id = 1; id <= INPUTS.size(); ++id) {
        pull(id, false);
    }
    auto& manager = recorder.get<IOAlarmInManager>("IOAlarmInManager");
    manager.notifyAlarmConsumers(false);
    AlarmRecorder messages;
    manager.addListener(&messages);
    for (unsigned id = 1; id <= INPUTS.size(); ++id) {
        for (const bool alarm : {true, false}) {
            pull(id, alarm);
            EXPECT_TRUE(messages.waitFor(std::to_string(id) + (alarm ? "=1" : "=0")))
                << "input " << id << ": " << messages.take();
            messages.take();
        }
    }

    m_Chips[1].remove();
    pull(1, true);
    EXPECT_TRUE(messages.waitFor("1=1")) << "the other bank goes on: " << messages.take();
    m_Chips[1].restore();
    for (unsigned id = 9; id <= INPUTS.size(); ++id) {
        pull(id, id == 12);
    }
    m_Chips[1].linkAs(m_Board.root(), 1);
    EXPECT_TRUE(messages.waitFor("1=1 12=1")) << messages.take();
    recorder.stop();
}

TEST_F(RoadTest, AnEdgeIsAWaitAReadAndTheLevelsOfEachBank) {
    const auto road = callsOfEdges([&](int level) { pull(3, level != 0); });
    ASSERT_EQ(road.size(), 3U);
    for (const std::string& calls : road) {
        EXPECT_EQ(calls, "ioctl*2 read wait");
    }
}

// Changes fall on a grid of 50 ms; the rest of the upper limits is for a busy machine.
TEST_F(RoadTest, TimedLevelsLastAsLongAsAsked) {
    Recorder recorder;
    recorder.outputs().setAlarmOutMode(1, {AlarmOutMode::Steady, AlarmOutMode::Direct, 400, 0});
    recorder.outputs().triggerAlarm(1);
    EXPECT_TRUE(m_Chips[2].value(0));
    const auto held = gaps(1000);
    ASSERT_EQ(held.size(), 1U);
    EXPECT_GE(held[0], 380);
    EXPECT_LE(held[0], 550);

    recorder.outputs().setAlarmOutMode(1, {AlarmOutMode::Flash, AlarmOutMode::Direct, 1500, 5});
    recorder.outputs().triggerAlarm(1);
    auto flashes = gaps(2500);
    EXPECT_FALSE(m_Chips[2].value(0)) << "it ends inactive";
    ASSERT_GE(flashes.size(), 6U);
    ASSERT_LE(flashes.size(), 9U);
    std::nth_element(flashes.begin(), flashes.begin() + 3, flashes.end());
    EXPECT_GE(flashes[3], 180);
    EXPECT_LE(flashes[3], 270);
}

TEST_F(RoadTest, AProcessKilledWhileFlashingLeavesTheLineFree) {
    const auto dieFlashing = [&] {
        Recorder recorder;
        recorder.outputs().setAlarmOutMode(1, {AlarmOutMode::Flash, AlarmOutMode::Direct, 0, 20});
        recorder.outputs().triggerAlarm(1);
        if (gaps(1000).size() > 5) {
            std::raise(SIGKILL);
        }
    };
    EXPECT_EXIT(dieFlashing(), testing::KilledBySignal(SIGKILL), "");
    EXPECT_TRUE(gaps(300).empty());
    EXPECT_FALSE(m_Chips[2].value(0)) << "this chip gives a line that nobody holds to its pull";
    LineRequest(m_Chips[2].device(), 0, GPIO_V2_LINE_FLAG_INPUT);
    Recorder recorder;
    recorder.outputs().triggerAlarm(1);
    EXPECT_TRUE(m_Chips[2].value(0));
}

TEST_F(RoadTest, ABoardTellsTheKernelsTimesAndALostChipAndGivesTheLinesBack) {
    {
        const LogCapture log;
        const nvrhw::Board board;
        ChangeRecorder told;
        const auto watch = board.onInput(std::ref(told));
        told.takeUpTo("16~normal ");
        std::int64_t edge = -1, toldEdge = 0;
        for (int i = 1; i <= 20 && toldEdge != edge; ++i) { // a level may be read before its edge
            pull(1, i % 2 != 0);
            told.takeUpTo(i % 2 != 0 ? "1=alarm " : "1=normal ");
            toldEdge = told.inputs().back().time.steady.time_since_epoch().count();
            Insight::findLastEdge(0, 0, edge);
        }
        EXPECT_EQ(toldEdge, edge);
        EXPECT_TRUE(board.output(1).hold());
        EXPECT_TRUE(m_Chips[2].value(0));
        m_Chips[1].remove();
        told.takeUpTo("16=unreadable ");
        EXPECT_EQ(board.input(16).state(), nvrhw::Input::Unreadable);
    }
    m_Chips[1].restore();
    LineRequest(m_Chips[2].device(), 0, GPIO_V2_LINE_FLAG_INPUT);
}

} // namespace
