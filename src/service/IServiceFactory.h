#pragma once

#include "foundation/SafePointer.h"
#include "platform/base/Export.h"

#include <map>
#include <memory>
#include <string>

/// The services of the library, by name.
///
/// Takes no lock: the registry is written only during start(), and may be read from any thread
/// once start() has returned.
class NVRHW_API IServiceFactory {
public:
    IServiceFactory() = default;

    /// Releases every service, in ascending order of the names.
    virtual ~IServiceFactory();
    IServiceFactory(const IServiceFactory&) = delete;
    IServiceFactory& operator=(const IServiceFactory&) = delete;

    /// Builds and registers the services: 1.
    virtual int start() = 0;

    /// Ends what runs by itself; the services stay registered.
    virtual void stop() = 0;

    /// The holder registered under `name` (case counts), or null. It stays the registry's:
    /// down-cast it to the SafePointer type of the service and copy that to keep the service.
    ///
    ///     auto* holder = dynamic_cast<SafePointer<GPIOOperator>*>(factory->getService("gpio"));
    BaseSafePointer* getService(const std::string& name) const;

    /// All holders by their names.
    const std::map<std::string, BaseSafePointer*>& getServices() const { return m_ServiceMap; }

protected:
    /// Registers a service; a name that is present already keeps its service.
    template <typename T>
    void registerService(const std::string& name, const SafePointer<T>& service) {
        auto holder = std::make_unique<SafePointer<T>>(service);
        if (m_ServiceMap.emplace(name, holder.get()).second) {
            static_cast<void>(holder.release()); // now the map's
        }
    }

    /// The service registered under `name`, or null when there is none of this type.
    template <typename T> SafePointer<T>* findService(const std::string& name) const {
        return dynamic_cast<SafePointer<T>*>(getService(name));
    }

    /// Releases every service, as the destructor does.
    void releaseServices();

private:
    std::map<std::string, BaseSafePointer*> m_ServiceMap;
};
