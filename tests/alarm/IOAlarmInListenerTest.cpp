#include "alarm/IOAlarmInListener.h"

#include "support/AlarmBench.h"

#include <unistd.h>

namespace {

/// Writes down what it is asked, and refuses at one point.
class FakeDetect : public IGPIODetect {
public:
    FakeDetect(std::string& journal, std::string refuses)
        : m_Journal(journal), m_Refuses(std::move(refuses)) {}

    int open() override { return answer("open"); }
    void close() override { answer("close"); }
    int setSignalHandler(int number, Handler handler) override {
        EXPECT_EQ(handler, &IOAlarmInListener::notifyAlarm);
        return answer("handler" + std::to_string(number));
    }
    int addDetectLine(int pid, int group, int bit) override {
        EXPECT_EQ(pid, getpid());
        return answer("add" + std::to_string(group) + "/" + std::to_string(bit));
    }
    int removeDetectLine(int, int, int) override { return answer("remove"); }
    int startDetect() override { return answer("start"); }
    int stopDetect() override { return answer("stop"); }

private:
    int answer(const std::string& call) {
        m_Journal += " " + call;
        return call == m_Refuses ? 5 : 0;
    }

    std::string& m_Journal;
    std::string m_Refuses;
};

class IOAlarmInListenerTest : public AlarmBench {
protected:
    IOAlarmInListenerTest() : AlarmBench({{1, 0, 3, 0}, {2, 1, 4, 0}}, {}) {}
};

// The real detector and the handler are tested with the whole library.
TEST_F(IOAlarmInListenerTest, UndoesAStartThatFails) {
    const struct {
        const char* refused;
        int result;
        const char* journal;
    } rows[] = {
        {"stop", 1, " open handler10 add0/3 add1/4 start"},
        {"open", 0, " open"},
        {"handler10", 0, " open handler10 close"},
        {"add1/4", 0, " open handler10 add0/3 add1/4 close"},
        {"start", 0, " open handler10 add0/3 add1/4 start close"},
    };
    for (const auto& row : rows) {
        std::string journal;
        IOAlarmInListener listener(SafePointer<IGPIODetect>(new FakeDetect(journal, row.refused)));
        listener.setMachineConfigurationDetail(m_Detail);
        EXPECT_EQ(listener.start(), row.result) << row.refused;
        EXPECT_EQ(journal, row.journal);
        EXPECT_EQ(listener.stop(), std::string(row.refused) == "stop" ? 5 : 0);
    }
    testing::internal::CaptureStdout();
    EXPECT_THROW(IOAlarmInListener::notifyAlarm(10), XQRuntimeError) << "no manager yet";
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "SafePointer Report:16IOAlarmInManager Use NULL pointer ->\n");
}

} // namespace
