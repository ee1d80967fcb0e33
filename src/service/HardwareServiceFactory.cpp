#include "service/HardwareServiceFactory.h"

#include "alarm/IOAlarmInListener.h"
#include "alarm/IOAlarmInManager.h"
#include "alarm/IOAlarmOutManager.h"
#include "config/MachineConfiguration.h"
#include "config/MachineConfigurationDetail.h"
#include "config/Monitor.h"
#include "gpio/GPIOOperator.h"
#include "platform/Gpio.h"
#include "platform/I2CController.h"
#include "platform/NetController.h"
#include "platform/SystemTime.h"

namespace {

constexpr char SOURCE[] = "HardwareServiceFactory";

constexpr char DETAIL[] = "machineConfigurationDetail";
constexpr char CONFIGURATION[] = "machineConfiguration";
constexpr char I2C[] = "I2CController";
constexpr char NET[] = "NetController";
constexpr char MONITOR[] = "moniter";
constexpr char SYSTEM_TIME[] = "systemTime";
constexpr char REAL_GPIO[] = "RealGPIO";
constexpr char GPIO_OPERATOR[] = "gpio";
constexpr char ALARM_IN_MANAGER[] = "IOAlarmInManager";
constexpr char ALARM_IN_LISTENER[] = "IOAlarmInListener";
constexpr char ALARM_OUT_MANAGER[] = "IOAlarmOutManager";

constexpr char RTC_CONFIG_FILE[] = "../config/RTCDriverConfig.xml";
constexpr char GPIO_DEVICE[] = "/dev/gpiodrv";

} // namespace

XQMutex HardwareServiceFactory::m_InstanceMutex;

HardwareServiceFactory* HardwareServiceFactory::getInstance() {
    static HardwareServiceFactory instance;
    return &instance;
}

int HardwareServiceFactory::start() {
    if (m_IsRunning) {
        return 1;
    }
    if (getService(ALARM_OUT_MANAGER) != nullptr) { // the last one to be registered: all are there
        watchAgain();
    } else {
        releaseServices(); // of a start that an exception ended
        startConfiguration();
        startControllers();
        startGPIO();
        startAlarms();
    }
    m_IsRunning = true;
    return 1;
}

void HardwareServiceFactory::watchAgain() {
    auto& listener = *findService<IOAlarmInListener>(ALARM_IN_LISTENER);
    listener->stop(); // somebody may have started it meanwhile; a second start would fail
    listener->setIOAlarmInManager(*findService<IOAlarmInManager>(ALARM_IN_MANAGER));
    listener->start();
}

void HardwareServiceFactory::startConfiguration() {
    const SafePointer<MachineConfigurationDetail> detail(new (SOURCE, __LINE__)
                                                             MachineConfigurationDetail);
    detail->init();
    registerService(DETAIL, detail);

    const SafePointer<MachineConfiguration> configuration(new (SOURCE, __LINE__)
                                                              MachineConfiguration);
    configuration->setMachineConfigurationDetail(*findService<MachineConfigurationDetail>(DETAIL));
    configuration->init();
    registerService(CONFIGURATION, configuration);
}

void HardwareServiceFactory::startControllers() {
    const SafePointer<I_I2CController> i2c(new (SOURCE, __LINE__) I2CController);
    i2c->init();
    registerService(I2C, i2c);

    registerService(NET, SafePointer<INetController>(new (SOURCE, __LINE__) NetController));

    registerService(MONITOR, SafePointer<Monitor>(new (SOURCE, __LINE__) Monitor));

    auto* clock = new (SOURCE, __LINE__) SystemTime;
    const SafePointer<ISystemTime> systemTime(clock);
    clock->m_ConfigFileName = RTC_CONFIG_FILE;
    systemTime->init();
    registerService(SYSTEM_TIME, systemTime);
}

void HardwareServiceFactory::startGPIO() {
    auto* driver = new (SOURCE, __LINE__) GPIO;
    const SafePointer<IGPIO> gpio(driver);
    driver->m_DeviceName = GPIO_DEVICE;
    gpio->init();
    registerService(REAL_GPIO, gpio);

    const SafePointer<GPIOOperator> gpioOperator(new (SOURCE, __LINE__) GPIOOperator);
    gpioOperator->setGPIO(*findService<IGPIO>(REAL_GPIO));
    registerService(GPIO_OPERATOR, gpioOperator);
}

void HardwareServiceFactory::startAlarms() {
    auto& detail = *findService<MachineConfigurationDetail>(DETAIL);
    const auto& gpioOperator = *findService<GPIOOperator>(GPIO_OPERATOR);

    const SafePointer<IOAlarmInManager> inManager(new (SOURCE, __LINE__) IOAlarmInManager);
    inManager->setGPIOOperator(gpioOperator);
    inManager->setMachineConfigurationDetail(detail);
    inManager->init();
    registerService(ALARM_IN_MANAGER, inManager);

    const SafePointer<IOAlarmInListener> listener(new (SOURCE, __LINE__) IOAlarmInListener);
    listener->setMachineConfigurationDetail(detail);
    listener->setIOAlarmInManager(*findService<IOAlarmInManager>(ALARM_IN_MANAGER));
    listener->start();
    registerService(ALARM_IN_LISTENER, listener);

    const SafePointer<IOAlarmOutManager> outManager(new (SOURCE, __LINE__) IOAlarmOutManager);
    outManager->setGPIOOperator(gpioOperator);
    outManager->setMachineConfigurationDetail(detail);
    outManager->init();
    registerService(ALARM_OUT_MANAGER, outManager);
}

void HardwareServiceFactory::stop() {
    m_IsRunning = false;
    if (auto* listener = findService<IOAlarmInListener>(ALARM_IN_LISTENER)) {
        (*listener)->stop();
    }
}
