// An input is in alarm, or normal, or not yet judged; a change of its line becomes a message when a
// notification has read the batch and judges it. Notifications come from the detector's thread and
// from any other. They read without a lock, so that one that hangs in the driver keeps no other
// from reading; the manager's lock is held from the first judgement of a batch to its last message,
// and for every other call into the table. Two things must never be seen:
//
// Levels that were read first and are judged last: an input would be left in a state it has left.
// A notification notes the count of judgements before it reads. When the count has moved by the
// time it gets the lock, another one came first, and it reads again. So every batch that is judged
// was read after the judgement before it.
//
// A notification that reads for ever because others are faster. When it was overtaken in two
// readings there have been two judgements since it began; the batch of the later one was read after
// the earlier one, hence after the notification began, and tells what it was to tell: it ends. (A
// line that could not be read in that batch keeps its state, as after any failed reading.) A batch
// without a state judges nothing and does not count, unless a hook is told of the lines it misses.
// A look for the hook alone judges nothing either: it makes a notification read again, and no more.
#include "alarm/IOAlarmInManager.h"

#include "alarm/GPIOAlarmIn.h"
#include "platform/Diagnostics.h"
#include "platform/System.h"
#include "platform/Time.h"

#include <cstdint>
#include <cstdio>

namespace {

constexpr char SOURCE[] = "IOAlarmInManager";
constexpr int ALARM_IN_MAJOR_TYPE = 1;
constexpr int ALARM_IN_MINOR_TYPE = 1;
constexpr int MAX_READINGS = 2; // for one notification, see above

IOInfo toIOInfo(const SafePointer<GPIOSignalConfigItem>& item) {
    IOInfo info;
    info.setId(item->getId());
    info.setGroupId(item->getGroup());
    info.setBitPosion(item->getBitPosition());
    return info;
}

} // namespace

namespace NS_IOAlarmInManager {

void changeHardwareConfigItem2IOInfo(const HardwareConfigItemList::Items& items,
                                     std::vector<IOInfo>& infos) {
    infos.clear();
    for (const auto& item : items) {
        infos.push_back(toIOInfo(dynamic_pointer_cast<GPIOSignalConfigItem>(item)));
    }
}

void changeGPIOSignalConfigItem2IOInfo(const std::vector<SafePointer<GPIOSignalConfigItem>>& items,
                                       std::vector<IOInfo>& infos) {
    infos.clear();
    for (const auto& item : items) {
        infos.push_back(toIOInfo(item));
    }
}

} // namespace NS_IOAlarmInManager

IOAlarmInManager::~IOAlarmInManager() = default;

void IOAlarmInManager::setMachineConfigurationDetail(
    SafePointer<MachineConfigurationDetail>& detail) {
    m_AlarmInConfigItemList = detail->getAlarmInConfigItemList();
    m_Lines.clear();
    m_Detail = detail;
}

void IOAlarmInManager::setGPIOOperator(const SafePointer<GPIOOperator>& gpioOperator) {
    m_GPIOOperator = gpioOperator;
}

void IOAlarmInManager::init() { initRealIOAlarmIn(); }

void IOAlarmInManager::initRealIOAlarmIn() {
    const auto& items = m_AlarmInConfigItemList->getHardwareConfigItemList();
    for (const auto& item : items) {
        const auto signal = dynamic_pointer_cast<GPIOSignalConfigItem>(item);
        const SafePointer<GPIOAlarmIn> alarmIn(new (SOURCE, __LINE__)
                                                   GPIOAlarmIn(m_GPIOOperator, signal));
        alarmIn->setVirtualFlag(false);
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        m_AlarmIns.insert({signal->getId(), SafePointer<IAlarmIn>(alarmIn)});
    }
    if (m_Lines.size() != items.size()) {
        NS_IOAlarmInManager::changeHardwareConfigItem2IOInfo(items, m_Lines);
    }
}

void IOAlarmInManager::uninit() {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_AlarmIns.clear();
}

// The operation on the table takes the lock before it looks into it.
int IOAlarmInManager::getValidLevel(int id, int& level) NVRHW_NO_THREAD_SAFETY_ANALYSIS {
    return getValidLevel(m_AlarmIns, id, level);
}

int IOAlarmInManager::setValidLevel(int id, int level) NVRHW_NO_THREAD_SAFETY_ANALYSIS {
    return setValidLevel(m_AlarmIns, id, level);
}

int IOAlarmInManager::getValidLevel(AlarmInTable& table, int id, int& level) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const auto found = table.find(id);
    if (found == table.end()) {
        return 0;
    }
    level = found->second->getValidLevel();
    return 1;
}

int IOAlarmInManager::setValidLevel(AlarmInTable& table, int id, int level) {
    Hook told;
    {
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        const auto found = table.find(id);
        if (found == table.end()) {
            return 0;
        }
        found->second->setValidLevel(level);
        if (m_Hook != nullptr && &table == &m_AlarmIns) {
            told = m_Hook;
            told->validLevelSet(id, level);
        }
    }
    if (told != nullptr) {
        told->released();
    }
    return 1;
}

void IOAlarmInManager::setHook(const std::shared_ptr<IAlarmInHook>& hook) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_Hook = hook;
    for (const auto& known : m_AlarmIns) {
        if (hook != nullptr) {
            hook->validLevelSet(known.first, known.second->getValidLevel());
        }
    }
}

// Items never change; a list can only get longer.
void IOAlarmInManager::getRealLevel(std::vector<IOState>& states) {
    const auto& items = m_AlarmInConfigItemList->getHardwareConfigItemList();
    if (items.size() == m_Lines.size()) {
        m_GPIOOperator->get(m_Lines, states);
        return;
    }
    std::vector<IOInfo> lines;
    NS_IOAlarmInManager::changeHardwareConfigItem2IOInfo(items, lines);
    m_GPIOOperator->get(lines, states);
}

void IOAlarmInManager::getLevel(bool isVirtual, std::vector<IOState>& states) {
    if (!isVirtual) {
        getRealLevel(states);
    }
}

int IOAlarmInManager::notifyAlarmConsumers(bool isVirtual) {
    look(isVirtual, FOR_ALL);
    return 0;
}

void IOAlarmInManager::tellHook() { look(false, FOR_HOOK); }

void IOAlarmInManager::look(bool isVirtual, Purpose purpose) {
    Hook told;
    const auto states = m_States.take();
    for (int overtaken = 0; overtaken < MAX_READINGS;) {
        const unsigned before = m_Judgements;
        const unsigned looksBefore = m_HookLooks;
        states->clear();
        getLevel(isVirtual, *states);
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        if (before != m_Judgements) {
            ++overtaken;
            continue;
        }
        if (looksBefore != m_HookLooks) {
            continue; // that one has judged nothing in this one's place
        }
        told = isVirtual ? nullptr : m_Hook;
        if (purpose == FOR_HOOK) {
            ++m_HookLooks;
        } else {
            m_Judgements += !states->empty() || told != nullptr ? 1 : 0;
            judge(*states, isVirtual);
        }
        if (told != nullptr) {
            told->judged(*states);
        }
        break;
    }
    if (told != nullptr) {
        told->released();
    }
}

void IOAlarmInManager::judge(const std::vector<IOState>& states, bool isVirtual) {
    auto known = m_AlarmIns.begin(); // most often both are in the order of the ids
    for (const IOState& state : states) {
        if (known == m_AlarmIns.end() || known->first != state.getId()) {
            known = m_AlarmIns.find(state.getId());
        }
        if (known == m_AlarmIns.end()) {
            continue;
        }
        int alarm = 0;
        if (known->second->checkAlarmValid(state.getLevel(), alarm) != 0) {
            notifyChange(state.getId(), isVirtual, alarm);
        }
        ++known;
    }
}

void IOAlarmInManager::notifyChange(int id, bool isVirtual, int alarm) {
    std::string sourceId;
    DataConverter::convert(id, sourceId);
    const auto seconds = static_cast<std::int64_t>(XQDeviceTime::getSeconds());

    AlarmInformation message;
    message.setAlarmMajorType(ALARM_IN_MAJOR_TYPE);
    message.setAlarmMinorType(ALARM_IN_MINOR_TYPE);
    message.setAlarmSourceId(sourceId);
    message.setAlarmTime(static_cast<std::int32_t>(seconds));
    message.setAlarmFlag(alarm);
    if (GlobalEnv::getInstance()->getPrintFlag() != 0) {
        std::printf("IOAlarmInManager::notifyAlarmConsumers(%d),alarmFlag=%d\n", isVirtual ? 1 : 0,
                    alarm);
    }
    notify(&message);
}
