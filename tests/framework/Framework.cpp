#include "Framework.h"

#include "platform/Diagnostics.h"
#include "platform/FileSystemAbility.h"
#include "platform/Gpio.h"
#include "platform/GpioDetect.h"
#include "platform/HardwareConfigure.h"
#include "platform/I2CController.h"
#include "platform/Insight.h"
#include "platform/MachineInfo.h"
#include "platform/MonitorParam.h"
#include "platform/NetController.h"
#include "platform/Observer.h"
#include "platform/SoftwarePackage.h"
#include "platform/System.h"
#include "platform/SystemTime.h"
#include "platform/Thread.h"
#include "platform/Time.h"
#include "platform/XmlConfigure.h"
#include "platform/base/MisuseLog.h"
#include "platform/base/Mutex.h"

#include <map>
#include <set>
#include <sstream>
#include <thread>
#include <utility>

using Framework::note;
using std::string;
using std::to_string;
using std::vector;

static string& notes = *new string; // the library calls until the very end
static thread_local int locksHeld = 0;

void Framework::note(const string& call, bool withLocks) {
    notes += call + (withLocks ? " under " + to_string(locksHeld) : "") + " ";
}
string Framework::taken() { return std::exchange(notes, ""); }

#define NOTED(Class, exceptions)                                                                   \
    struct Class::Impl {};                                                                         \
    Class::Class() { note(#Class); }                                                               \
    Class::~Class() exceptions { note("~" #Class); }

// Locks: one number of the storage is enough.
using State = std::atomic<int>;
static State& stateIn(unsigned char* storage) { return *reinterpret_cast<State*>(storage); }
XQMutex::~XQMutex() = default;
int XQMutex::Init() { return 1; }
void XQMutex::Lock(const char*, int) {
    while (stateIn(m_Storage).exchange(1) != 0) {
    }
    ++locksHeld;
}
void XQMutex::Unlock(const char*, int) { --locksHeld, stateIn(m_Storage) = 0; }

// Counts: every object gets a record of its own, which stays for ever.
struct Record : ref_count {
    explicit Record(void* object) { handOut(object); }
    using ref_count::takeBack;
};
int ref_count::lockContended() {
    for (unsigned free = FREE; !m_Lock.compare_exchange_weak(free, LOCKED); free = FREE) {
        if (free == RETIRED) {
            return 1;
        }
        std::this_thread::yield();
    }
    return 0;
}
void ref_count::recycle() { m_Lock = RETIRED; }
RefCountManager* RefCountManager::getInstance() {
    static auto* const manager = new RefCountManager;
    return manager;
}
ref_count* RefCountManager::retrieveRefCount(void* it, const char*) { return new Record(it); }
void RefCountManager::returnbackRefCount(ref_count* record, const char*) {
    static_cast<Record*>(record)->takeBack();
}
void* operator new(std::size_t size, const char*, int) { return ::operator new(size); }
void operator delete(void* memory, const char*, int) noexcept { ::operator delete(memory); }
void AllocationLedger::release(void* memory) noexcept { ::operator delete(memory); }
void MisuseLog::write(const char* report, const char*, int) { note(report); }

// Time stands still but for waits. There is one thread, which makes a pass when it is told to. Its
// running() is late, as with some threads: a second start() before the first pass is refused.
static long now = 1000000000; // microseconds
TarvikTime::TarvikTime(long seconds, long microseconds)
    : m_Seconds(int(seconds)), m_Microseconds(int(microseconds)) {}
TarvikTime TarvikTime::currentTime() { return {now / 1000000, now % 1000000}; }
void TarvikTime::wait(const TarvikTime& t) { now += t.m_Seconds * 1000000L + t.m_Microseconds; }
double XQDeviceTime::getSeconds() { return 1234567.9; }

struct GThread::Impl {
    function<int> body;
};
static const function<int>* body = nullptr;
static bool isStarted = false, hasPassed = false;
GThread::GThread(function<int> callable, const string& name, function<int>, function<int>)
    : m_Impl(new Impl{callable}) {
    note("GThread " + name), body = &m_Impl->body;
}
GThread::~GThread() { note("~GThread"); }
int GThread::emptyFun() { return 0; }
int GThread::start() { return (note("start"), std::exchange(isStarted, true) ? 0 : 1); }
void GThread::stop() { note("stop"), isStarted = hasPassed = false; }
int GThread::running() const { return (note("running"), hasPassed ? 1 : 0); }
void Framework::pass() { hasPassed = isStarted && (*body)() == 0; }

// Messages go to the one observer there is; nothing is traced; a log record is a note.
NOTED(ISubject, )
static IObserver* observer = nullptr;
int ISubject::addObserver(IObserver* added) { return (observer = added, 1); }
int ISubject::notifyObserver(IMessage* message) { return (observer->update(message), 1); }
struct GlobalEnv::Impl {};
GlobalEnv::GlobalEnv() = default;
GlobalEnv* GlobalEnv::getInstance() {
    static auto* const environment = new GlobalEnv;
    return environment;
}
int GlobalEnv::getPrintFlag() const { return 0; }
void GlobalEnv::setRootDirectory(const string&) {}
string GlobalEnv::getRootDirectory() const { return "/"; }
void Logger::writeLog(const char*, const char* text, const char*, int) { note(text); }
int SystemHelper::getPid() { return 4711; }
void DataConverter::convert(const int& value, string& text) { text = to_string(value); }

// Lines in memory. The detector calls its handler in a thread of its own.
using Line = std::pair<int, int>; // group and bit
static std::map<Line, int> levels;
static string text(Line line) { return to_string(line.first) + "/" + to_string(line.second); }

NOTED(GPIO, noexcept)
static int isDeviceThere = 0;
void Framework::plugIn() { isDeviceThere = 1; }
int GPIO::init() { return (note(m_DeviceName), isDeviceThere); }
int GPIO::uninit() { return 1; }
int GPIO::set(int group, int bit, int level) {
    return (note("set " + text({group, bit}) + "=" + to_string(level), true), 1);
}
int GPIO::get(int group, int bit, int& level) { return (level = levels[{group, bit}], 1); }
int GPIO::get(const vector<IOInfo>& lines, vector<IOState>& states) {
    note("read", true);
    for (const IOInfo& info : lines) {
        const Line line(info.getGroupId(), info.getBitPosion());
        note(text(line)), states.emplace_back(info.getId(), levels[line]);
    }
    return 1;
}

NOTED(GPIODetect, noexcept)
static IGPIODetect::Handler handlerInUse = nullptr;
static std::set<Line> watched;
static bool isDetecting = false;
int GPIODetect::open() { return (note("open"), 0); }
void GPIODetect::close() { note("close"); }
int GPIODetect::setSignalHandler(int signalNumber, Handler handler) {
    return (note(to_string(signalNumber)), handlerInUse = handler, 0);
}
int GPIODetect::addDetectLine(int process, int group, int bit) {
    return (note(to_string(process)), note(text(*watched.insert({group, bit}).first)), 0);
}
int GPIODetect::removeDetectLine(int, int, int) { return 1; }
int GPIODetect::startDetect() { return (note("startDetect"), isDetecting = true, 0); }
int GPIODetect::stopDetect() { return (note("stopDetect"), isDetecting = false, 0); }
void Framework::edge(int group, int bit, int level) {
    levels[{group, bit}] = level;
    if (isDetecting && watched.count({group, bit}) != 0) {
        std::thread(handlerInUse, 10).join();
    }
}

// What it knows beyond the results: nothing.
bool Insight::findLineFault(Operation, int, int, Cause&) { return false; }
bool Insight::findDocumentFault(Cause&) { return false; }
bool Insight::findLastEdge(int, int, std::int64_t&) { return false; }
vector<Cause> Insight::findDocumentErrors(bool) { return {}; }

NOTED(I2CController, )
int I2CController::init() { return (note("init"), 0); }
int I2CController::getBuses(vector<I2CBus>&) { return 0; }
int I2CController::readRegisters(int, int, int, int, vector<unsigned char>&) { return 0; }
int I2CController::writeRegisters(int, int, int, const vector<unsigned char>&) { return 0; }
NOTED(NetController, )
int NetController::getInterfaces(vector<NetInterface>&) { return 0; }
int NetController::getInterface(const string&, NetInterface&) { return 0; }
NOTED(SystemTime, )
int SystemTime::init() { return (note(m_ConfigFileName), 0); }
int SystemTime::getHardwareTime(DateTime&) { return 0; }
int SystemTime::setHardwareTime(const DateTime&) { return 0; }
int SystemTime::setSystemFromHardware() { return 0; }
int SystemTime::setHardwareFromSystem() { return 0; }

// The ability document: the path of each property and its value; a blank stands before each path.
static const string ABILITY =
    " ChannelAbility/channelNumber=16"
    " MaxPlaybackChannelNumber/value=4 InterPhoneFlag/InterPhoneFlag=1"
    " AlarmAbility/alarmInDeviceNumber=2 MonitorResolution/item#0/id=9"
    " MonitorAbility#0/monitorId=6 LayoutAbility/item#0/modelId=2 NetworkAbility/networkCardNum=0"
    " DecodingAbility/LayoutDecodingAbility#0/SubWinDecodingAbility#0/MaxVideoResolution/width=8"
    " DecodingAbility/LayoutDecodingAbility#0/SubWinDecodingAbility#0/SubWinList/item#0/winId=1"
    " NetworkAbility/NetworkCard#0/item#0/networkingType=5";
static bool isThere(const string& path) { return ABILITY.find(" " + path) != string::npos; }

template <typename Interface> struct Place : Interface { // a node or an item
    explicit Place(const string& where) : path(where) {}
    int getProperty(const string& name, int& out) const override { return get(name, out); }
    int getProperty(const string& name, bool& out) const override { return get(name, out); }
    int getProperty(const string& name, string& out) const override { return get(name, out); }
    template <typename Value> int get(const string& name, Value& out) const {
        note(name);
        const string key = " " + path + name + "=";
        const std::size_t at = ABILITY.find(key);
        return at != string::npos && std::istringstream(ABILITY.substr(at + key.size())) >> out;
    }
    const string path;
};
template <typename Made, typename Out> static int list(const string& path, Out& out) {
    while (isThere(path + "#" + to_string(out.size()) + "/")) {
        out.emplace_back(new Made(path + "#" + to_string(out.size()) + "/"));
    }
    return out.empty() ? (out.emplace_back(new Made("left by a failed call/")), 0) : 1;
}
using NodePointer = SafePointer<XmlConfigureNode>;
struct Node : Place<XmlConfigureNode> {
    using Place::Place;
    int getConfigNode(const string& name, NodePointer& out) const override {
        note("node " + name), out = NodePointer(new Node(path + name + "/"));
        return isThere(path + name + "/") ? 1 : 0;
    }
    int getConfigNodeList(const string& name, vector<NodePointer>& out) const override {
        return (note("nodes " + name), list<Node>(path + name, out));
    }
    int getItemList(vector<SafePointer<XmlConfigureItem>>& out) const override {
        return (note("items"), list<Place<XmlConfigureItem>>(path + "item", out));
    }
};
NOTED(XmlConfigureTool, )
int XmlConfigureTool::open(const string& path, int version, OPEN_MODE mode) {
    return (note(path), note(to_string(version) + " " + to_string(mode)), 1);
}
int XmlConfigureTool::getConfigNode(const string& name, NodePointer& out) const {
    return Node("").getConfigNode(name, out);
}
int XmlConfigureTool::getConfigNodeList(const string& name, vector<NodePointer>& out) const {
    return Node("").getConfigNodeList(name, out);
}

// The other documents: some lines, and files that are read and empty.
NOTED(GPIOSignalConfigure, )
static string section;
void GPIOSignalConfigure::setConfigName(const string& name) { note(section = name); }
void GPIOSignalConfigure::setConfigFileName(const string& name) { note(name); }
int GPIOSignalConfigure::getConfig(SafePointer<HardwareConfigItemList>& out) {
    using Items = vector<GPIOSignalConfigItem>; // id, group, bit, valid level
    out = SafePointer<HardwareConfigItemList>(new HardwareConfigItemList);
    for (auto& item :
         section == "GPIOAlarmIn" ? Items{{7, 0, 4, 1}, {8, 0, 5, 0}} : Items{{1, 1, 0, 1}}) {
        out->addHardwareConfigItem(SafePointer<HardwareConfigItem>(new GPIOSignalConfigItem(item)));
    }
    return 1;
}
NOTED(SoftwarePackageParser, )
int SoftwarePackageParser::parse(const string& path, SoftwarePackage&) { return (note(path), 1); }
int SystemInfoParser::parseMachineInfo(const string& path, MachineInfo&) { return (note(path), 1); }
using FileSystems = vector<FileSystemAbility>;
int FileSystemAbilityConfig::parseFileSystemAbilityConfig(const string& path, FileSystems&) {
    return (note(path), 1);
}
struct MonitorParamConfig::Impl {};
MonitorParamConfig::MonitorParamConfig(int, const string& path) { note(path); }
MonitorParamConfig::~MonitorParamConfig() { note("~monitors"); }
int MonitorParamConfig::setMonitorParam(const MonitorParam&) { return 1; }
int MonitorParamConfig::getMonitorType(int, MonitorParam&) { return 1; }
int MonitorParamConfig::getAllMonitorParam(vector<MonitorParam>&) { return 1; }
