#include "service/HardwareServiceFactory.h"

#include "alarm/IOAlarmInListener.h"
#include "alarm/IOAlarmInManager.h"
#include "alarm/IOAlarmOutManager.h"
#include "config/ConfigFileNameConst.h"
#include "config/MachineConfiguration.h"
#include "config/Monitor.h"
#include "gpio/GPIOOperator.h"
#include "platform/I2CController.h"
#include "platform/NetController.h"
#include "platform/SystemTime.h"
#include "support/AlarmRecorder.h"
#include "support/SimulatedBoard.h"

#include <gtest/gtest.h>

namespace {

/// Says its name when it goes.
class Service {
public:
    Service(std::string name, std::string& journal) : m_Name(std::move(name)), m_Journal(journal) {}
    Service(const Service&) = delete;
    ~Service() { m_Journal += m_Name + " "; }

    const std::string m_Name;

private:
    std::string& m_Journal;
};

class Registry : public IServiceFactory {
public:
    explicit Registry(std::string& journal) : m_Journal(journal) {}

    int start() override { return 1; }
    void stop() override {}
    void add(const char* name, const char* label) {
        registerService(name, SafePointer<Service>(new Service(label, m_Journal)));
    }

private:
    std::string& m_Journal;
};

TEST(IServiceFactory, KeepsServicesByNameAndReleasesThemInOrder) {
    std::string journal;
    {
        Registry factory(journal);
        for (const char* name : {"gpio", "systemTime", "RealGPIO", "moniter", "I2CController"}) {
            EXPECT_EQ(factory.getService(name), nullptr);
            factory.add(name, name);
        }
        BaseSafePointer* holder = factory.getService("gpio");
        ASSERT_NE(dynamic_cast<SafePointer<Service>*>(holder), nullptr);
        EXPECT_EQ(dynamic_cast<SafePointer<IGPIO>*>(holder), nullptr);
        EXPECT_EQ(factory.getService("GPIO"), nullptr);

        factory.add("gpio", "latecomer");
        EXPECT_EQ(journal, "latecomer ") << "a name that is taken keeps its service";
        EXPECT_EQ(factory.getService("gpio"), holder);
        journal.clear();
    }
    EXPECT_EQ(journal, "I2CController RealGPIO gpio moniter systemTime ");
}

/// A factory beside the one of the process.
class Factory : public HardwareServiceFactory {
public:
    template <typename T> T& get(const std::string& name) {
        auto* holder = findService<T>(name);
        if (holder == nullptr) {
            throw std::runtime_error("no service " + name);
        }
        return *holder->operator->();
    }
};

/// A copy of the sample board: inputs 1 to 16 on banks 0 and 1, outputs 1 to 4 on bank 2.
class HardwareServiceFactoryTest : public testing::Test {
protected:
    HardwareServiceFactoryTest() {
        std::filesystem::copy(NVRHW_SAMPLE_BOARD, m_Board.root(),
                              std::filesystem::copy_options::recursive |
                                  std::filesystem::copy_options::overwrite_existing);
    }

    // The handler's manager outlives its factory; one that nobody counts takes its place.
    ~HardwareServiceFactoryTest() noexcept override {
        SafePointer<IOAlarmInManager> untracked(new IOAlarmInManager);
        IOAlarmInListener().setIOAlarmInManager(untracked);
    }

    std::filesystem::path hardwareConfig() const {
        return m_Board.root().string() + ConfigFileNameConst::getHardwareConfigFileName();
    }

    /// Returns whether the input is in alarm now.
    int flipInput(const GPIOSignalConfigItem& item) const {
        const int level = 1 - m_Board.level(item.getGroup(), item.getBitPosition());
        m_Board.write(item.getGroup(), item.getBitPosition(), std::to_string(level) + "\n");
        return level == item.getValidLevel() ? 1 : 0;
    }

    static std::vector<SafePointer<GPIOSignalConfigItem>>
    signals(const SafePointer<HardwareConfigItemList>& list) {
        std::vector<SafePointer<GPIOSignalConfigItem>> found;
        for (const auto& item : list->getHardwareConfigItemList()) {
            found.push_back(dynamic_pointer_cast<GPIOSignalConfigItem>(item));
        }
        return found;
    }

    SimulatedBoard m_Board;
};

TEST_F(HardwareServiceFactoryTest, BuildsElevenServicesInOrder) {
    Factory factory;
    factory.stop(); // nothing to stop yet
    EXPECT_EQ(factory.getService("gpio"), nullptr);
    EXPECT_EQ(factory.start(), 1);

    const void* const inOrder[] = {
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
    EXPECT_EQ(created, std::vector<const void*>(std::begin(inOrder), std::end(inOrder)));
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
    const auto inputs =
        signals(factory.get<MachineConfigurationDetail>("machineConfigurationDetail")
                    .getAlarmInConfigItemList());
    for (const auto& input : inputs) {
        for (const int flag : {1, 0}) {
            EXPECT_EQ(flipInput(*input.operator->()), flag);
            EXPECT_TRUE(
                messages.waitFor(std::to_string(input->getId()) + "=" + std::to_string(flag)))
                << "input " << input->getId();
            messages.take();
        }
    }

    // A line that is lost says nothing; what changed meanwhile is told when it is back.
    const auto& lost = *inputs[4].operator->();
    const std::string other = "6=1";
    std::filesystem::remove(m_Board.line(lost.getGroup(), lost.getBitPosition()));
    flipInput(*inputs[5].operator->());
    EXPECT_TRUE(messages.waitFor(other)) << messages.take();
    m_Board.write(lost.getGroup(), lost.getBitPosition(), std::to_string(lost.getValidLevel()));
    EXPECT_TRUE(messages.waitFor(other + " 5=1")) << messages.take();

    factory.stop();
    messages.take();
    flipInput(*inputs[0].operator->());
    manager.notifyAlarmConsumers(false);
    EXPECT_EQ(messages.take(), "1=1") << "asked, not told";
    EXPECT_NE(factory.getService("IOAlarmInListener"), nullptr);
    EXPECT_EQ(factory.get<IOAlarmInListener>("IOAlarmInListener").start(), 1);
    flipInput(*inputs[0].operator->());
    EXPECT_TRUE(messages.waitFor("1=0")) << messages.take();
    factory.stop();
}

TEST_F(HardwareServiceFactoryTest, ATriggerReachesTheLine) {
    Factory factory;
    factory.start();
    auto& manager = factory.get<IOAlarmOutManager>("IOAlarmOutManager");
    for (const auto& output :
         signals(factory.get<MachineConfigurationDetail>("machineConfigurationDetail")
                     .getAlarmOutConfigItemList())) {
        const int active = output->getValidLevel();
        manager.triggerAlarm(output->getId());
        EXPECT_EQ(m_Board.level(output->getGroup(), output->getBitPosition()), active);
        manager.cancelAlarm(output->getId());
        EXPECT_EQ(m_Board.level(output->getGroup(), output->getBitPosition()), 1 - active);
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

TEST_F(HardwareServiceFactoryTest, RaisesWithoutAlarmLinesAndCanTryAgain) {
    const auto good = hardwareConfig().string() + ".good";
    std::filesystem::rename(hardwareConfig(), good);
    Factory factory;
    testing::internal::CaptureStdout();
    EXPECT_THROW(factory.start(), XQRuntimeError);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "SafePointer Report:22HardwareConfigItemList Construct from NULL <T>pointer\n");
    EXPECT_NE(factory.getService("gpio"), nullptr);
    EXPECT_EQ(factory.getService("IOAlarmInManager"), nullptr);
    std::filesystem::rename(good, hardwareConfig());
    EXPECT_EQ(factory.start(), 1);
    EXPECT_NE(factory.getService("IOAlarmOutManager"), nullptr);
}

} // namespace
