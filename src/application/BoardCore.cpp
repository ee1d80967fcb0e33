// A board is open from the end of its constructor to the beginning of close(). It opens from below:
// documents, driver, manager and operator, models with their hooks, and last the detector, after
// which one look at the lines gives every input its state; what changes before that look is in it,
// and what changes after it is detected. It closes from above: the detector, the outputs, callers
// that are still inside, callbacks, and last the services, so that all lines are free when it has
// closed.
#include "application/BoardCore.h"

#include "ability/DeviceAbilityCollector.h"
#include "application/Service.h"
#include "config/ConfigFileNameConst.h"
#include "config/MachineConfiguration.h"
#include "platform/Diagnostics.h"
#include "platform/Gpio.h"
#include "platform/HardwareConfigure.h"
#include "platform/Insight.h"
#include "platform/base/Mutex.h"
#include "service/HardwareServiceFactory.h"

#include <cerrno>
#include <filesystem>
#include <utility>

namespace nvrhw {

namespace {

constexpr char SOURCE[] = "Board";

XQMutex placeMutex; // guards placeTaken
bool placeTaken NVRHW_GUARDED_BY(placeMutex) = false;

std::string rootDirectory() { return GlobalEnv::getInstance()->getRootDirectory(); }

Error unusable(std::vector<Cause> causes) {
    return {Error::BadBoard, "the board " + rootDirectory() + " cannot be opened",
            std::move(causes)};
}

// Where a document is wrong Insight has told all of it; this is for a framework that knows nothing.
void expectRead(int result, const char* what) {
    if (result == 0) {
        Cause cause{"the log says why"};
        Insight::findDocumentFault(cause);
        cause.what.insert(0, std::string(what) + " cannot be read: ");
        throw unusable({cause});
    }
}

std::vector<LineUse> toUses(LineUse::Purpose purpose,
                            const SafePointer<HardwareConfigItemList>& list) {
    std::vector<LineUse> uses;
    for (const auto& item : list->getHardwareConfigItemList()) {
        const auto signal = dynamic_pointer_cast<GPIOSignalConfigItem>(item);
        uses.push_back({purpose,
                        signal->getId(),
                        signal->getSettings().name,
                        {signal->getGroup(), signal->getBitPosition(), signal->getValidLevel()},
                        signal->getSettings()});
    }
    return uses;
}

// Asked before anything is changed.
const BoardOptions& expectFactory(bool isRunning, const BoardOptions& options) {
    if (HardwareServiceFactory::getInstance()->isRunning() == isRunning) {
        return options;
    }
    if (isRunning) {
        throw Error(Error::NoService, "the factory does not run: start() comes before this");
    }
    throw Error(Error::Busy, "the factory runs in this process: Board::running() is its board");
}

} // namespace

BoardCore::Place::Place(const std::string& directory) : m_OldDirectory(rootDirectory()) {
    const XQMutexManager guard(placeMutex, SOURCE, __LINE__);
    if (placeTaken) {
        throw Error(Error::Busy, "the board " + m_OldDirectory +
                                     " is open in this process, which can have one at a time");
    }
    if (!directory.empty()) {
        GlobalEnv::getInstance()->setRootDirectory(directory);
    }
    placeTaken = true;
}

BoardCore::Place::~Place() {
    const XQMutexManager guard(placeMutex, SOURCE, __LINE__);
    GlobalEnv::getInstance()->setRootDirectory(m_OldDirectory);
    placeTaken = false;
}

BoardCore::BoardCore(const BoardOptions& options)
    : m_Options(expectFactory(false, options)), m_Place(options.directory), m_IsOwn(true) {
    m_Options.directory = rootDirectory();
    expectDocuments();
    readLines();
    if (!options.linesOnly) {
        expectRead(readMachine(), "the machine or software information");
        expectRead(readAbilities(), "the abilities");
    }
    openLines();
    begin();
}

BoardCore::BoardCore(OfFactory /*unused*/)
    : m_Options(expectFactory(true, BoardOptions())), m_Place(""), m_IsOwn(false) {
    m_Options.directory = rootDirectory();
    m_Options.atEnd = BoardOptions::LeaveAll;
    const auto configuration = service<MachineConfiguration>();
    m_Machine = configuration->getMachineInfo();
    m_Software = configuration->getSoftwarePackage();
    m_Abilities = configuration->getNVRDeviceAbility();
    m_Services->detail = service<MachineConfigurationDetail>();
    m_Services->gpioOperator = service<GPIOOperator>();
    m_Services->manager = service<IOAlarmInManager>();
    begin();
}

BoardCore::~BoardCore() noexcept { close(); }

void BoardCore::expectDocuments() const {
    std::error_code error;
    if (!std::filesystem::is_directory(m_Options.directory, error)) {
        throw unusable({{"", m_Options.directory, 0, error ? error.value() : ENOTDIR}});
    }
    std::vector<Cause> causes = Insight::findDocumentErrors(m_Options.linesOnly);
    if (!causes.empty()) {
        throw unusable(std::move(causes));
    }
}

void BoardCore::readLines() {
    m_Services->detail =
        SafePointer<MachineConfigurationDetail>(new (SOURCE, __LINE__) MachineConfigurationDetail);
    expectRead(m_Services->detail->initHardwareConfig(), "the hardware configuration");
}

// What cannot be read stays empty.
int BoardCore::readMachine() {
    MachineConfigurationDetail detail;
    const int machine = detail.initMachineInfo();
    const int software = detail.initSoftwarePackage();
    m_Machine = detail.getMachineInfo();
    m_Software = detail.getSoftwarePackage();
    return machine != 0 && software != 0 ? 1 : 0;
}

int BoardCore::readAbilities() {
    DeviceAbilityCollector collector;
    collector.setFileSystemFileName(ConfigFileNameConst::getFileSystemFileName());
    collector.setAbilityConfigFileName(ConfigFileNameConst::getNVRAbilityFileName());
    const int result = collector.init();
    if (result != 0) {
        m_Abilities = collector.getDeviceAbility();
    }
    return result;
}

const MachineInfo& BoardCore::machine() {
    if (m_Options.linesOnly) {
        std::call_once(m_MachineRead, [this] { readMachine(); });
    }
    return m_Machine;
}

const SoftwarePackage& BoardCore::software() {
    machine();
    return m_Software;
}

const NVRDeviceAbility& BoardCore::abilities() {
    if (m_Options.linesOnly) {
        std::call_once(m_AbilitiesRead, [this] { readAbilities(); });
    }
    return m_Abilities;
}

void BoardCore::openLines() {
    const SafePointer<IGPIO> driver(new (SOURCE, __LINE__) GPIO);
    expectRead(driver->init(), "the GPIO device");

    auto& [detail, gpioOperator, manager] = *m_Services;
    gpioOperator = SafePointer<GPIOOperator>(new (SOURCE, __LINE__) GPIOOperator);
    gpioOperator->setGPIO(driver);
    manager = SafePointer<IOAlarmInManager>(new (SOURCE, __LINE__) IOAlarmInManager);
    manager->setGPIOOperator(gpioOperator);
    manager->setMachineConfigurationDetail(detail);
    manager->init();
}

void BoardCore::begin() {
    auto& [detail, gpioOperator, manager] = *m_Services;
    m_Inputs = std::make_shared<InputModel>(
        manager, toUses(LineUse::AlarmInput, detail->getAlarmInConfigItemList()), m_Dispatcher,
        m_Life);
    m_Outputs = std::make_shared<OutputModel>(
        gpioOperator, toUses(LineUse::AlarmOutput, detail->getAlarmOutConfigItemList()),
        m_Dispatcher, m_Life);
    try {
        manager->setHook(m_Inputs);
        gpioOperator->setHook(m_Outputs);
        watch();
    } catch (...) {
        close();
        throw;
    }
}

void BoardCore::watch() {
    if (!m_Dispatcher->start()) {
        throw Error(Error::NoWorker, "the thread for callbacks cannot be started");
    }
    if (!m_Options.watch) {
        return;
    }
    if (m_IsOwn) {
        m_Watch = std::make_unique<InputWatch>(m_Services->manager);
        if (!m_Watch->start(m_Inputs->uses())) {
            throw unusable({{"the inputs cannot be watched; the log says why"}});
        }
    }
    m_Services->manager->tellHook();
}

InputModel& BoardCore::inputs() const {
    if (!m_Options.watch) {
        m_Services->manager->tellHook();
    }
    return *m_Inputs;
}

void BoardCore::close() {
    if (m_Services == nullptr) {
        return;
    }
    m_Watch.reset();
    m_Life->close(); // nobody drives any more but this
    if (m_Options.atEnd != BoardOptions::LeaveAll) {
        m_Outputs->putToRest(m_Options.atEnd == BoardOptions::RestAll);
    }
    m_Services->manager->setHook(nullptr);
    m_Services->gpioOperator->setHook(nullptr);
    m_Inputs->close();
    m_Outputs->close();
    m_Dispatcher->stop();
    m_Services.reset();
}

void BoardCore::closeLater() {
    Logger::writeLog("BoardError",
                     "the board is destroyed inside a callback of its own: it ends when that has "
                     "returned",
                     SOURCE, __LINE__);
    m_Dispatcher->finish([self = shared_from_this()] { self->close(); });
}

} // namespace nvrhw
