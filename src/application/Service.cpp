#include "application/Service.h"

#include "platform/Diagnostics.h"
#include "service/HardwareServiceFactory.h"

#include <cstdlib>
#include <cxxabi.h>

namespace nvrhw {

namespace {

constexpr char SOURCE[] = "Service";

// As the type is written: without the tag of our symbols.
std::string nameOf(const std::type_info& type) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> demangled(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
    std::string name = status == 0 ? demangled.get() : type.name();
    const std::string tag = "[abi:nvrhw]";
    for (auto at = name.find(tag); at != std::string::npos; at = name.find(tag)) {
        name.erase(at, tag.size());
    }
    return name;
}

const IServiceFactory& factory() { return *HardwareServiceFactory::getInstance(); }

} // namespace

std::vector<const BaseSafePointer*> inner::services() {
    std::vector<const BaseSafePointer*> holders;
    for (const auto& entry : factory().getServices()) {
        holders.push_back(entry.second);
    }
    return holders;
}

void inner::failService(const std::type_info& wanted) {
    std::string text = "there is no service of type " + nameOf(wanted);
    const char* separator = ": the HardwareServiceFactory has ";
    if (factory().getServices().empty()) {
        text += ": the HardwareServiceFactory has not been started";
    }
    for (const auto& [name, holder] : factory().getServices()) {
        text += separator + name + " (" + nameOf(typeid(*holder)) + ")";
        separator = ", ";
    }
    throw Error(Error::NoService, text);
}

void inner::logRelease() noexcept {
    try {
        throw;
    } catch (const std::exception& error) {
        Logger::writeLog("SafePointer", error.what(), SOURCE, __LINE__);
    } catch (...) {
        Logger::writeLog("SafePointer", "a release raised what is no std::exception", SOURCE,
                         __LINE__);
    }
}

} // namespace nvrhw
