#include "lines/AlarmWatch.h"

#include "print/CommandError.h"
#include "print/LogBook.h"

AlarmWatch::AlarmWatch(bool withPresent)
    : m_Inputs(m_Lines), m_ListenerId(m_Inputs.manager()->addListener(&m_Queue)) {
    const SafePointer<IOAlarmInManager>& manager = m_Inputs.manager();
    manager->notifyAlarmConsumers(false); // the first one tells of every input
    while (!withPresent && !m_Queue.isEmpty()) {
        m_Queue.take();
    }
    SafePointer<MachineConfigurationDetail> detail(m_Lines.detail());
    SafePointer<IOAlarmInManager> target(manager);
    m_Listener.setMachineConfigurationDetail(detail);
    m_Listener.setIOAlarmInManager(target);
    if (m_Listener.start() == 0) {
        manager->removeListener(m_ListenerId);
        throw CommandError("the inputs cannot be watched: " + LogBook::takeCause("no cause given"));
    }
    manager->notifyAlarmConsumers(false); // what has changed before the watch began
}

AlarmWatch::~AlarmWatch() {
    m_Listener.stop();
    m_Inputs.manager()->removeListener(m_ListenerId);
}
