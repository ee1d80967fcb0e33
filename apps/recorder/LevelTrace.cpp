#include "LevelTrace.h"

#include "Output.h"
#include "alarm/IOAlarmInManager.h"
#include "platform/System.h"

LevelTrace* LevelTrace::s_Instance = nullptr;

LevelTrace::LevelTrace(const SafePointer<GPIOOperator>& gpio,
                       const SafePointer<HardwareConfigItemList>& outputs)
    : m_GPIO(gpio) {
    s_Instance = this;
    NS_IOAlarmInManager::changeHardwareConfigItem2IOInfo(outputs->getHardwareConfigItemList(),
                                                         m_Lines);
    showChanges();
    m_Detect.open();
    m_Detect.setSignalHandler(1, onChange);
    for (const IOInfo& line : m_Lines) {
        m_Detect.addDetectLine(SystemHelper::getPid(), line.getGroupId(), line.getBitPosion());
    }
    m_Detect.startDetect();
}

LevelTrace::~LevelTrace() { m_Detect.stopDetect(); }

void LevelTrace::onChange(int /*signalNumber*/) { s_Instance->showChanges(); }

void LevelTrace::showChanges() {
    std::vector<IOState> states;
    m_GPIO->get(m_Lines, states);
    for (const IOState& state : states) {
        const auto [entry, isNew] = m_Levels.insert({state.getId(), state.getLevel()});
        if (isNew || entry->second != state.getLevel()) {
            entry->second = state.getLevel();
            say("level:   output %d %s %d", state.getId(), isNew ? "is at" : "->",
                state.getLevel());
        }
    }
}
