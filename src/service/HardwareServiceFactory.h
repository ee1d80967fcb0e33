#pragma once

#include "platform/base/Export.h"
#include "platform/base/Mutex.h"
#include "service/IServiceFactory.h"

#include <atomic>

/// The entry to the library: builds the services, wires them and hands them out.
///
/// | name                         | holder type                               |
/// |------------------------------|-------------------------------------------|
/// | "machineConfigurationDetail" | SafePointer<MachineConfigurationDetail>   |
/// | "machineConfiguration"       | SafePointer<MachineConfiguration>         |
/// | "I2CController"              | SafePointer<I_I2CController>              |
/// | "NetController"              | SafePointer<INetController>               |
/// | "moniter"                    | SafePointer<Monitor>                      |
/// | "systemTime"                 | SafePointer<ISystemTime>                  |
/// | "RealGPIO"                   | SafePointer<IGPIO>                        |
/// | "gpio"                       | SafePointer<GPIOOperator>                 |
/// | "IOAlarmInManager"           | SafePointer<IOAlarmInManager>             |
/// | "IOAlarmInListener"          | SafePointer<IOAlarmInListener>            |
/// | "IOAlarmOutManager"          | SafePointer<IOAlarmOutManager>            |
///
/// start() and stop() are for one thread.
class NVRHW_API HardwareServiceFactory : public IServiceFactory {
public:
    /// The one factory of the process; it is destroyed, with its services, at process exit.
    static HardwareServiceFactory* getInstance();

    /// Reads the configuration files and builds all services. Returns 1, whatever the services
    /// report: they log what they cannot do, and "why does nothing happen" is answered there.
    /// A second call changes nothing and returns 1; after stop() it watches the alarm inputs again,
    /// with the services and listeners that are there.
    ///
    /// When the ability documents cannot be read it does not return: after a log record and a
    /// second's wait it ends the process with status 0.
    /// When the alarm lines cannot be read it raises XQRuntimeError; the services before them stay
    /// registered, and a later call begins anew: it releases them first, and holders fetched before
    /// are then invalid.
    int start() override;

    /// Stops watching the alarm inputs; every service stays registered. Does nothing before
    /// start(). Not to be called from inside a notification, whose end it waits for.
    void stop() override;

    /// True from a start() that returned until stop(). May be asked from any thread.
    bool isRunning() const noexcept { return m_IsRunning; }

protected:
    HardwareServiceFactory() = default;

private:
    void startConfiguration();
    void startControllers();
    void startGPIO();
    void startAlarms();
    void watchAgain();

    std::atomic<bool> m_IsRunning{false};
    static XQMutex m_InstanceMutex;
};
