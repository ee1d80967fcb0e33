#include "service/HardwareServiceFactory.h"

#include "alarm/IOAlarmOutManager.h"
#include "config/ConfigFileNameConst.h"
#include "config/MachineConfiguration.h"
#include "config/Monitor.h"
#include "gpio/GPIOOperator.h"
#include "platform/I2CController.h"
#include "platform/NetController.h"
#include "platform/SystemTime.h"
#include "support/AlarmRecorder.h"
#include "support/ServiceTest.h"

namespace {

/// Says its name when it goes.
struct Service {
    ~Service() { journal += name + " "; }

    std::string name;
    std::string& journal;
};

TEST(IServiceFactory, KeepsServicesByNameAndReleasesThemInOrder) {
    std::string journal;
    {
        Factory factory;
        const auto add = [&](const char* name, const char* label) {
            factory.registerService(name, SafePointer<Service>(new Service{label, journal}));
        };
        for (const char* name : {"gpio", "systemTime", "RealGPIO", "moniter", "I2CController"}) {
            EXPECT_EQ(factory.getService(name), nullptr);
            add(name, name);
        }
        BaseSafePointer* holder = factory.getService("gpio");
        ASSERT_NE(dynamic_cast<SafePointer<Service>*>(holder), nullptr);
        EXPECT_EQ(dynamic_cast<SafePointer<IGPIO>*>(holder), nullptr);
        EXPECT_EQ(factory.getService("GPIO"), nullptr);

        add("gpio", "latecomer");
        EXPECT_EQ(journal, "latecomer ") << "a name that is taken keeps its service";
        EXPECT_EQ(factory.getService("gpio"), holder);
        journal.clear();
    }
    EXPECT_EQ(journal, "I2CController RealGPIO gpio moniter systemTime ");
}

class HardwareServiceFactoryTest : public ServiceTest {
protected:
    void setInput(int id, bool alarm) const {
        const bool level = alarm == (INPUTS[static_cast<std::size_t>(id) - 1] == '1');
        m_Board.write((id - 1) / 8, (id - 1) % 8, level ? "1\n" : "0\n");
    }
};

TEST_F(HardwareServiceFactoryTest, BuildsElevenServicesInOrder) {
    Factory factory;
    factory.stop(); // nothing to stop yet
    EXPECT_EQ(factory.getService("gpio"), nullptr);
    EXPECT_EQ(factory.start(), 1);

    const std::vector<const void*> inOrder{
        &factory.get<MachineConfigurationDetail>("machineConfigurationDetail"),
        &factory.get<MachineConfiguration>("machineConfiguration"),
        &factory.get<I_I2CController>("I2CController"),
        &factory.get<INetController>("NetController"),
        &factory.get<Monitor>("moniter"),
        &factory.get<ISystemTime>("systemTime"),
        &factory.get<IGPIO>("RealGPIO"),
        &factory.get<GPIOOperator>("gpio"),
        &factory.get<IOAlarmInManager>("IOAlarmInManager"),
        &factory.get<IOAlarmInListener>("IOAlarmInListener"),
        &factory.get<IOAlarmOutManager>("IOAlarmOutManager"),
    };
    std::vector<const void*> created;
    for (const Allocation& made : AllocationLedger::outstanding()) {
        if (made.file == "HardwareServiceFactory") {
            created.push_back(made.address);
        }
    }
    EXPECT_EQ(created, inOrder);
    EXPECT_EQ(factory.getService("monitor"), nullptr);
    EXPECT_EQ(dynamic_cast<SystemTime&>(factory.get<ISystemTime>("systemTime")).m_ConfigFileName,
              "../config/RTCDriverConfig.xml");
    EXPECT_EQ(dynamic_cast<GPIO&>(factory.get<IGPIO>("RealGPIO")).m_DeviceName, "/dev/gpiodrv");
    EXPECT_EQ(factory.get<MachineConfiguration>("machineConfiguration")
                  .getNVRDeviceAbility()
                  .getMaxChannelNumber(),
              32);

    const std::size_t after = AllocationLedger::outstanding().size();
    BaseSafePointer* const holder = factory.getService("gpio");
    EXPECT_EQ(factory.start(), 1);
    EXPECT_EQ(factory.getService("gpio"), holder);
    EXPECT_EQ(AllocationLedger::outstanding().size(), after);

    EXPECT_EQ(HardwareServiceFactory::getInstance(), HardwareServiceFactory::getInstance());
}

TEST_F(HardwareServiceFactoryTest, ALineThatChangesReachesTheListeners) {
    Factory factory;
    factory.start();
    auto& manager = factory.get<IOAlarmInManager>("IOAlarmInManager");
    AlarmRecorder messages;
    manager.addListener(&messages);
    manager.notifyAlarmConsumers(false);
    EXPECT_EQ(messages.take(), "1=0 2=0 3=0 4=0 5=0 6=0 7=0 8=0 9=0 10=0 11=0 12=0 13=0 14=0 "
                               "15=0 16=0");
    for (int id = 1; id <= static_cast<int>(INPUTS.size()); ++id) {
        for (const bool alarm : {true, false}) {
            setInput(id, alarm);
            EXPECT_TRUE(messages.waitFor(std::to_string(id) + (alarm ? "=1" : "=0"))) << id;
            messages.take();
        }
    }

    // A line that is lost says nothing; what changed meanwhile is told when it is back.
    std::filesystem::remove(m_Board.line(0, 4));
    setInput(6, true);
    EXPECT_TRUE(messages.waitFor("6=1")) << messages.take();
    setInput(5, true);
    EXPECT_TRUE(messages.waitFor("6=1 5=1")) << messages.take();

    factory.stop();
    messages.take();
    setInput(1, true);
    manager.notifyAlarmConsumers(false);
    EXPECT_EQ(messages.take(), "1=1") << "asked, not told";
    EXPECT_NE(factory.getService("IOAlarmInListener"), nullptr);
    EXPECT_EQ(factory.get<IOAlarmInListener>("IOAlarmInListener").start(), 1);
    setInput(1, false);
    EXPECT_TRUE(messages.waitFor("1=0")) << messages.take();
    factory.stop();
}

// As a test suite of a recorder does it: started, stopped and started in one process, beside
// another factory whose inputs are then those that the one detector's handler asks.
TEST_F(HardwareServiceFactoryTest, WatchesAgainAfterAStop) {
    Factory factory;
    Factory other;
    EXPECT_FALSE(factory.isRunning());
    for (const bool alarm : {true, false, true}) {
        EXPECT_EQ(factory.start(), 1);
        EXPECT_EQ(factory.start(), 1);
        EXPECT_TRUE(factory.isRunning());
        AlarmRecorder messages;
        auto& manager = factory.get<IOAlarmInManager>("IOAlarmInManager");
        manager.notifyAlarmConsumers(false);
        const int id = manager.addListener(&messages);
        setInput(1, alarm);
        EXPECT_TRUE(messages.waitFor(alarm ? "1=1" : "1=0")) << messages.take();
        manager.removeListener(id);
        factory.stop();
        EXPECT_FALSE(factory.isRunning());
        other.start();
        other.stop();
        factory.get<IOAlarmInListener>("IOAlarmInListener").start(); // that it runs does no harm
    }
}

TEST_F(HardwareServiceFactoryTest, ATriggerReachesTheLine) {
    Factory factory;
    factory.start();
    auto& manager = factory.get<IOAlarmOutManager>("IOAlarmOutManager");
    for (const int id : {1, 2, 3, 4}) {
        const int active = id == 3 ? 0 : 1; // as the sample board has it
        manager.triggerAlarm(id);
        EXPECT_EQ(m_Board.level(2, id - 1), active) << id;
        manager.cancelAlarm(id);
        EXPECT_EQ(m_Board.level(2, id - 1), 1 - active) << id;
    }
}

TEST_F(HardwareServiceFactoryTest, EndsTheProcessWithoutAbilities) {
    std::filesystem::remove(m_Board.root().string() + ConfigFileNameConst::getNVRAbilityFileName());
    EXPECT_EXIT(
        Factory().start(), testing::ExitedWithCode(0),
        "NVRAbility.xml.*\n.*InitError: init DeviceAbility failed \\(MachineConfiguration:");
}

// With the detector and the worker running, a process that simply ends must end by itself.
TEST_F(HardwareServiceFactoryTest, MayBeLeftRunningAtTheProcessEnd) {
    const auto leaveFlashing = [] {
        HardwareServiceFactory* factory = HardwareServiceFactory::getInstance();
        factory->start();
        auto* outputs = factory->getService("IOAlarmOutManager");
        auto& manager = dynamic_cast<SafePointer<IOAlarmOutManager>&>(*outputs);
        manager->setAlarmOutMode(1, {AlarmOutMode::Flash, AlarmOutMode::Direct, 0, 20.0F});
        manager->triggerAlarm(1);
        std::exit(0);
    };
    EXPECT_EXIT(leaveFlashing(), testing::ExitedWithCode(0), "");
}

TEST_F(HardwareServiceFactoryTest, RaisesWithoutAlarmLinesButNotWithoutTheDeviceAndCanTryAgain) {
    const auto move = [this](const std::string& from, const std::string& to) {
        std::filesystem::rename(m_Board.root().string() + from, m_Board.root().string() + to);
    };
    const std::string config = ConfigFileNameConst::getHardwareConfigFileName();
    move(config, "/good");
    move("/dev", "/gone");
    Factory factory;
    testing::internal::CaptureStdout();
    EXPECT_THROW(factory.start(), XQRuntimeError);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "SafePointer Report:22HardwareConfigItemList Construct from NULL <T>pointer\n");
    EXPECT_NE(factory.getService("gpio"), nullptr);
    EXPECT_EQ(factory.getService("IOAlarmInManager"), nullptr);
    move("/good", config);
    EXPECT_EQ(factory.start(), 1);
    EXPECT_NE(factory.getService("IOAlarmOutManager"), nullptr);
    auto& listener = factory.get<IOAlarmInListener>("IOAlarmInListener");
    EXPECT_EQ(listener.start(), 0);
    move("/gone", "/dev");
    EXPECT_EQ(listener.start(), 1);
    EXPECT_EQ(listener.stop(), 0);
}

} // namespace
