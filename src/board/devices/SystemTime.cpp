#include "platform/SystemTime.h"

#include "board/devices/CalendarTime.h"
#include "board/devices/HardwareClock.h"
#include "board/documents/ConfigError.h"
#include "board/documents/TextFile.h"
#include "board/documents/XmlElement.h"
#include "board/documents/schema/ClockSchema.h"
#include "board/documents/schema/HardwareSchema.h"
#include "platform/base/Mutex.h"

#include <ctime>
#include <functional>

namespace {

using Schema = ClockSchema;

constexpr char SOURCE[] = "SystemTime";

struct Settings {
    std::string path;
    bool isUtc = true;
};

void log(const std::string& text, int line) {
    Logger::writeLog(SOURCE, text.c_str(), SOURCE, line);
}

/// Where a file may be as well that is not where it was asked for: beside the hardware
/// configuration, where that lies by default, when it was looked for from the working directory,
/// which differs from one way of starting a recorder to another. Else empty.
std::string otherPlaceOf(const std::string& fileName) {
    const std::string folder = HardwareSchema::DOCUMENT.path;
    return fileName.empty() || fileName.front() == '/'
               ? ""
               : GlobalEnv::getInstance()->resolve(folder.substr(0, folder.rfind('/') + 1) +
                                                   fileName.substr(fileName.rfind('/') + 1));
}

/// The file's text and, in `file`, where it was found; false when there is none.
bool find(const std::string& fileName, std::string& file, std::string& text) {
    const std::string asked = GlobalEnv::getInstance()->resolve(fileName);
    const std::string other = otherPlaceOf(fileName);
    file = asked;
    if (TextFile::readIfPresent(asked, text)) {
        return true;
    }
    if (!other.empty() && TextFile::readIfPresent(other, text)) {
        file = other;
        log(asked + ": no such file: " + other + " is taken", __LINE__);
        return true;
    }
    log(asked + ": no such file" + (other.empty() ? "" : ", nor " + other) + ": " +
            Schema::DOCUMENT.whenMissing,
        __LINE__);
    return false;
}

Settings readSettings(const std::string& fileName) {
    const char* const name = Schema::DEVICE.name;
    std::string file;
    std::string text;
    if (!find(fileName, file, text)) {
        return {Schema::DEFAULT_DEVICE};
    }
    const XmlElement root(std::make_shared<XmlDocument>(file, std::move(text)));
    const XmlElement device = root.name() == name ? root : root.child(name);
    if (root.children(name).size() > 1) {
        root.children(name)[1].fail("there can be only one");
    }
    return {device.text(Schema::PATH), device.flag(Schema::UTC)};
}

void setSystemClock(const DateTime& utc) {
    timespec time{};
    time.tv_sec = CalendarTime::secondsOf(utc);
    if (clock_settime(CLOCK_REALTIME, &time) != 0) {
        DeviceFile::fail("setting the system clock to " + CalendarTime::textOf(utc),
                         {{EPERM, "the capability CAP_SYS_TIME is needed"}});
    }
}

} // namespace

struct SystemTime::Impl {
    XQMutex mutex{};                             ///< held for each operation
    Settings settings NVRHW_GUARDED_BY(mutex){}; ///< without a path when no clock is configured

    int withClock(int line, const std::function<void(const HardwareClock&)>& action) {
        const XQMutexManager guard(mutex, SOURCE, line);
        const Settings used = settings;
        return guarded<std::runtime_error>(SOURCE, SOURCE, line, [&] {
            if (used.path.empty()) {
                throw std::runtime_error("no real-time clock is configured");
            }
            action(HardwareClock(used.path, used.isUtc));
        });
    }
};

SystemTime::SystemTime() : m_Impl(new Impl) {}

SystemTime::~SystemTime() = default;

int SystemTime::init() {
    const XQMutexManager guard(m_Impl->mutex, SOURCE, __LINE__);
    Settings settings;
    const int result = ConfigError::guard(SOURCE, SOURCE, __LINE__,
                                          [&] { settings = readSettings(m_ConfigFileName); });
    m_Impl->settings = settings;
    return result;
}

int SystemTime::getHardwareTime(DateTime& utc) {
    return m_Impl->withClock(__LINE__, [&](const HardwareClock& clock) { utc = clock.read(); });
}

int SystemTime::setHardwareTime(const DateTime& utc) {
    return m_Impl->withClock(__LINE__, [&](const HardwareClock& clock) { clock.set(utc); });
}

int SystemTime::setSystemFromHardware() {
    return m_Impl->withClock(__LINE__,
                             [](const HardwareClock& clock) { setSystemClock(clock.read()); });
}

int SystemTime::setHardwareFromSystem() {
    return m_Impl->withClock(__LINE__, [](const HardwareClock& clock) {
        clock.set(CalendarTime::fromSeconds(std::time(nullptr)));
    });
}
