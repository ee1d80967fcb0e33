#include "platform/SystemTime.h"

#include "board/devices/CalendarTime.h"
#include "board/devices/HardwareClock.h"
#include "board/documents/ConfigError.h"
#include "board/documents/TextFile.h"
#include "board/documents/XmlElement.h"
#include "platform/base/Mutex.h"

#include <ctime>
#include <functional>

namespace {

constexpr char SOURCE[] = "SystemTime";

constexpr char DEFAULT_DEVICE[] = "/dev/rtc0";
constexpr char DEVICE[] = "Device";
constexpr char PATH[] = "path";
constexpr char UTC[] = "utc";

struct Settings {
    std::string path;
    bool isUtc = true;
};

Settings readSettings(const std::string& fileName) {
    const std::string file = GlobalEnv::getInstance()->resolve(fileName);
    std::string text;
    Settings settings;
    if (!TextFile::readIfPresent(file, text)) {
        settings.path = DEFAULT_DEVICE;
        Logger::writeLog(SOURCE,
                         (file + ": no such file: " + DEFAULT_DEVICE + " in UTC is taken").c_str(),
                         SOURCE, __LINE__);
        return settings;
    }
    const XmlElement root(std::make_shared<XmlDocument>(file, text));
    const XmlElement device = root.name() == DEVICE ? root : root.child(DEVICE);
    if (root.children(DEVICE).size() > 1) {
        root.children(DEVICE)[1].fail("there can be only one");
    }
    settings.path = device.requireText(PATH);
    device.read(UTC, settings.isUtc);
    return settings;
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
