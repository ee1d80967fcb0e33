#include "alarm/IOAlarmInListener.h"

#include "support/AlarmRecorder.h"
#include "support/ConfiguredBoard.h"
#include "support/FakeGPIO.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

/// Writes down what it is asked, and refuses at one point.
class FakeDetect : public IGPIODetect {
public:
    explicit FakeDetect(std::string& journal, std::string refuses = {})
        : m_Journal(journal), m_Refuses(std::move(refuses)) {}

    int open() override { return answer("open"); }
    void close() override { answer("close"); }
    int setSignalHandler(int number, Handler handler) override {
        m_Handler = handler;
        return answer("handler" + std::to_string(number));
    }
    int addDetectLine(int pid, int group, int bit) override {
        EXPECT_EQ(pid, getpid());
        return answer("add" + std::to_string(group) + "/" + std::to_string(bit));
    }
    int removeDetectLine(int, int, int) override { return answer("remove"); }
    int startDetect() override { return answer("start"); }
    int stopDetect() override { return answer("stop"); }

    Handler m_Handler = nullptr;

private:
    int answer(const std::string& call) {
        m_Journal += (m_Journal.empty() ? "" : " ") + call;
        return call == m_Refuses ? 5 : 0;
    }

    std::string& m_Journal;
    std::string m_Refuses;
};

TEST(IOAlarmInListener, UndoesAStartThatFails) {
    const struct {
        const char* refused;
        int result;
        const char* journal;
    } rows[] = {
        {"", 1, "open handler10 add0/3 add1/4 start"},
        {"open", 0, "open"},
        {"handler10", 0, "open handler10 close"},
        {"add1/4", 0, "open handler10 add0/3 add1/4 close"},
        {"start", 0, "open handler10 add0/3 add1/4 start close"},
    };
    const ConfiguredBoard board({{1, 0, 3, 0}, {2, 1, 4, 0}}, {});
    auto detail = board.makeDetail();
    for (const auto& row : rows) {
        std::string journal;
        IOAlarmInListener listener(SafePointer<IGPIODetect>(new FakeDetect(journal, row.refused)));
        listener.setMachineConfigurationDetail(detail);
        EXPECT_EQ(listener.start(), row.result) << row.refused;
        EXPECT_EQ(journal, row.journal);
    }
    std::string journal;
    IOAlarmInListener listener(SafePointer<IGPIODetect>(new FakeDetect(journal, "stop")));
    EXPECT_EQ(listener.stop(), 5);
    testing::internal::CaptureStdout();
    EXPECT_THROW(listener.start(), XQRuntimeError);
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(journal, "stop open handler10");
}

TEST(IOAlarmInListener, HasTheManagerLookAtItsInputs) {
    testing::internal::CaptureStdout();
    EXPECT_THROW(IOAlarmInListener::notifyAlarm(10), XQRuntimeError) << "no manager yet";
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "SafePointer Report:16IOAlarmInManager Use NULL pointer ->\n");

    const ConfiguredBoard board({{1, 0, 3, 0}}, {});
    auto detail = board.makeDetail();
    auto* driver = new ("test", __LINE__) FakeGPIO;
    const SafePointer<GPIOOperator> gpio(new ("test", __LINE__) GPIOOperator);
    gpio->setGPIO(SafePointer<IGPIO>(driver));
    SafePointer<IOAlarmInManager> manager(new ("test", __LINE__) IOAlarmInManager);
    manager->setGPIOOperator(gpio);
    manager->setMachineConfigurationDetail(detail);
    manager->init();
    AlarmRecorder messages;
    manager->addListener(&messages);

    std::string journal;
    auto* detect = new FakeDetect(journal);
    IOAlarmInListener listener{SafePointer<IGPIODetect>(detect)};
    listener.setMachineConfigurationDetail(detail);
    listener.setIOAlarmInManager(manager);
    ASSERT_EQ(listener.start(), 1);
    detect->m_Handler(10);
    driver->setLevel(0, 3, 1);
    detect->m_Handler(10);
    detect->m_Handler(10);
    EXPECT_EQ(messages.take(), "1=1 1=0");

    SafePointer<IOAlarmInManager> untracked(new IOAlarmInManager); // lives until the process ends
    listener.setIOAlarmInManager(untracked);
}

} // namespace
