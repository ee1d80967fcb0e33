#include "lines/AlarmWatch.h"

AlarmWatch::AlarmWatch(const BoardLines& lines, AlarmMailbox& mailbox, bool withPresent)
    : m_Inputs(lines.makeManager<IOAlarmInManager>()),
      m_ListenerId(m_Inputs->addListener(&mailbox)) {
    m_Inputs->notifyAlarmConsumers(false); // the first one tells of every input
    if (!withPresent) {
        static_cast<void>(mailbox.take());
    }
    SafePointer<MachineConfigurationDetail> detail(lines.detail());
    m_Listener.setMachineConfigurationDetail(detail);
    m_Listener.setIOAlarmInManager(m_Inputs);
    m_IsWatching = m_Listener.start() != 0;
    m_Inputs->notifyAlarmConsumers(false); // what has changed before the watch began
}

AlarmWatch::~AlarmWatch() {
    m_Listener.stop();
    m_Inputs->removeListener(m_ListenerId);
}
