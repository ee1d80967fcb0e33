#include "Framework.h"
#include "alarm/IHardwareAlarmListener.h"
#include "alarm/IOAlarmInListener.h"
#include "alarm/IOAlarmOutManager.h"
#include "service/HardwareServiceFactory.h"

#include <iostream>
#include <nvrhw/nvrhw.h>

static void expect(const std::string& when, const std::string& calls) {
    const std::string made = Framework::taken();
    if (made != calls) {
        std::cerr << when << "\n  should be " << calls << "\n  but was   " << made << "\n";
        std::exit(1);
    }
}

struct Listener : IHardwareAlarmListener {
    void update(IMessage* message) override {
        const auto& event = dynamic_cast<AlarmInformation&>(*message);
        Framework::note(event.getAlarmSourceId() + "=" + std::to_string(event.getAlarmFlag()));
        Framework::note(std::to_string(10 * event.getAlarmMajorType() + event.getAlarmMinorType()));
        Framework::note("at " + std::to_string(event.getAlarmTime()), true);
    }
};

using In = SafePointer<IOAlarmInManager>;
using Out = SafePointer<IOAlarmOutManager>;
struct Factory : HardwareServiceFactory {}; // ends before the process does

static const char START[] =
    "GPIOSignalConfigure GPIOAlarmIn /hd1/program/config/hardwareConfig.xml ~GPIOSignalConfigure "
    "GPIOSignalConfigure GPIOAlarmOut /hd1/program/config/hardwareConfig.xml ~GPIOSignalConfigure "
    "/mnt/mtd/code/factory_setting/machineinfo.ini SoftwarePackageParser "
    "/mnt/mtd/code/program/packageversion.ini ~SoftwarePackageParser XmlConfigureTool "
    "/hd1/program/config/NVRAbility.xml 1 1 node ChannelAbility channelNumber maxDecodeAbility "
    "maxBitRate diskNumber node DispatchAbility node MaxPlaybackChannelNumber "
    "value node InterPhoneFlag InterPhoneFlag node AlarmAbility alarmInDeviceNumber "
    "alarmOutputDeviceNumber node MonitorResolution items id name type width height nodes "
    "MonitorAbility monitorId nodes MonitorResolution node LayoutAbility items modelId picNumber "
    "node DecodingAbility nodes LayoutDecodingAbility layoutmodeId nodes SubWinDecodingAbility "
    "node MaxVideoResolution width height resolutionname node SubWinList items winId node "
    "NetworkAbility networkCardNum nodes NetworkCard networkcardID items networkingType "
    "netWorkingModeName supportIPCConfigFlag supportDHCPServerFlag supportDHCPClientFlag "
    "supportDNSConfigFlag supportPOEConfigFlag node WebAbility ~XmlConfigureTool "
    "/hd1/program/config/fileSystemAbility.xml I2CController init NetController "
    "/mnt/mtd/code/config_file/MonitorParamConfig.xml SystemTime ../config/RTCDriverConfig.xml "
    "GPIO /dev/gpiodrv GThread GPIOOperationThread ISubject GPIODetect open 10 4711 0/4 4711 0/5 "
    "startDetect ";

static void inputs(Factory& factory) {
    static Listener listener; // for good: the framework here forgets nobody
    dynamic_cast<In&>(*factory.getService("IOAlarmInManager"))->addListener(&listener);
    const std::string read = "read under 0 0/4 0/5 ";
    const std::string event = " 11 at 1234567 under 1 ";
    Framework::edge(0, 4, 1);
    expect("the first edge tells of all inputs", read + "7=1" + event + "8=1" + event);
    Framework::edge(0, 5, 1);
    expect("an edge", read + "8=0" + event);
    Framework::edge(0, 5, 1);
    expect("an edge of nothing", read);
}

static void outputs(Factory& factory) {
    const std::string on = "set 1/0=1 under 1 ";
    const std::string off = "set 1/0=0 under 1 ";
    const std::string worker = on + "running start ";
    using Mode = AlarmOutMode;
    const struct {
        AlarmOutMode mode;
        std::string trigger;
        std::string passes[4]; // every 50 ms
        std::string cancel;
    } cases[] = {
        {{Mode::Steady, Mode::Direct, 0, 0}, on + "stop ", {}, off},
        {{Mode::Steady, Mode::Direct, 120, 0}, worker, {"", "", off}, off},
        {{Mode::Flash, Mode::Inverted, 0, 10}, worker, {"", off, "", on}, on},
        {{Mode::Flash, Mode::Direct, 140, 20}, worker, {off, on, off}, off},
        {{Mode::Pulse, Mode::Direct, 0, 0}, on + off, {}, off},
    };
    auto& manager = dynamic_cast<Out&>(*factory.getService("IOAlarmOutManager"));
    for (const auto& [mode, trigger, passes, cancel] : cases) {
        manager->setAlarmOutMode(1, mode);
        expect("mode", cancel + "stop ");
        manager->triggerAlarm(1);
        expect("trigger", trigger);
        for (const std::string& pass : passes) {
            Framework::pass();
            expect("pass", pass);
        }
        manager->cancelAlarm(1);
        expect("cancel", cancel + "stop ");
    }
}

static void application() {
    Framework::plugIn();
    {
        const nvrhw::Board board;
        const auto watch = board.onInput(nvrhw::inPlace, [](const nvrhw::InputChange& change) {
            Framework::note(std::to_string(change.input.id) + toText(change.state), true);
        });
        Framework::edge(0, 4, 1);
        board.output(1).hold();
    }
    const std::string calls = Framework::taken();
    for (const char* part :
         {"7normal under 0 8normal under 0 ", "7alarm under 0 ", "set 1/0=1 under 0 "}) {
        if (calls.find(part) == std::string::npos) {
            std::cerr << "no " << part << "in " << calls << "\n";
            std::exit(1);
        }
    }
}

int main() {
    {
        Factory factory;
        factory.start();
        expect("start", START);
        inputs(factory);
        outputs(factory);
        factory.stop();
        Framework::edge(0, 4, 0);
        expect("stop", "stopDetect ");
    }
    expect("end", "~I2CController ~GPIODetect ~NetController ~monitors ~SystemTime ");
    application();
    std::cout << "A good morning\n";
}
