#pragma once

#include "application/Error.h"
#include "foundation/SafePointer.h"

#include <memory>
#include <typeinfo>
#include <vector>

namespace nvrhw {

/// What the templates below need of the sources; not for applications.
namespace inner {

/// The holders of the HardwareServiceFactory's services.
NVRHW_API std::vector<const BaseSafePointer*> services();

/// Raises the Error of service().
[[noreturn]] NVRHW_API void failService(const std::type_info& wanted);

/// Logs the exception that is being handled.
NVRHW_API void logRelease() noexcept;

/// A reference that is given back without raising.
template <typename T> class Share {
public:
    explicit Share(const SafePointer<T>& pointer) : m_Pointer(pointer) {}
    Share(const Share&) = delete;
    Share& operator=(const Share&) = delete;
    ~Share() noexcept {
        try {
            m_Pointer.dec_reference(); // which leaves it empty, also when it raises
        } catch (...) {
            logRelease();
        }
    }

private:
    SafePointer<T> m_Pointer;
};

} // namespace inner

/// A std::shared_ptr that holds `pointer`'s object as one more SafePointer would, for whatever a
/// SafePointer cannot be put into: a lambda, a fixture, a class whose destructor must not raise.
/// The last copy gives the reference back; a release that raises is logged. An empty pointer gives
/// an empty std::shared_ptr.
template <typename T> std::shared_ptr<T> share(const SafePointer<T>& pointer) {
    if (!pointer) {
        return {};
    }
    return {std::make_shared<inner::Share<T>>(pointer), pointer.get()};
}

/// The service of the HardwareServiceFactory that is registered as a SafePointer<T>, such as
/// service<IOAlarmInManager>(). Raises Error::NoService when there is none: its text lists those
/// there are, or says that the factory has not been started. From any thread once start() has
/// returned.
template <typename T> SafePointer<T> service() {
    for (const BaseSafePointer* holder : inner::services()) {
        if (const auto* found = dynamic_cast<const SafePointer<T>*>(holder)) {
            return *found;
        }
    }
    inner::failService(typeid(T));
}

} // namespace nvrhw
