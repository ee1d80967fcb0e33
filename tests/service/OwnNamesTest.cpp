#include "alarm/IOAlarmOutManager.h"
#include "support/LogCapture.h"
#include "support/ServiceTest.h"

#include <atomic>

extern std::atomic<int> ownCalls; // see OwnNames.cpp
int useOwnNames();

namespace {

class OwnNamesTest : public ServiceTest {};

// An application's classes of the same names, in sources that never saw ours.
TEST_F(OwnNamesTest, StayTheApplications) {
    LogCapture log;
    {
        Factory factory;
        factory.start();
        log.take();
        auto& outputs = factory.get<IOAlarmOutManager>("IOAlarmOutManager");
        outputs.setAlarmOutMode(1, {AlarmOutMode::Flash, AlarmOutMode::Direct, 0, 20.0F});
        outputs.triggerAlarm(1);
        outputs.cancelAlarm(1);
        Logger::writeLog("a record", "of the library", __FILE__, __LINE__);
        log.expectOne({"a record"});
        EXPECT_EQ(ownCalls, 0);
        EXPECT_EQ(useOwnNames(), 8);
        EXPECT_EQ(ownCalls, 11) << "each of the application's calls reached its own class";
        factory.stop();
    }
    EXPECT_EQ(ownCalls, 11);
}

} // namespace
