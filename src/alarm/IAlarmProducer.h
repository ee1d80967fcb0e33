#pragma once

#include "alarm/AlarmInformation.h"
#include "alarm/IHardwareAlarmListener.h"
#include "platform/Observer.h"
#include "platform/base/Export.h"

/// The base of what emits alarm messages. Listeners stay the application's; all operations may be
/// called from any thread and from inside a notification.
class NVRHW_API IAlarmProducer : public ISubject {
public:
    IAlarmProducer() = default;
    virtual ~IAlarmProducer() noexcept(false);

    /// Adds a listener and returns its id (1 or more; 0 for null).
    int addListener(IHardwareAlarmListener* listener) { return addObserver(listener); }

    /// Removes the listener with this id: 1, or 0 when there is none. Afterwards it is not called
    /// any more; from inside a notification a call in another thread may still be running.
    int removeListener(int id) { return removeObserver(id); }

    /// The listener with this id, or null.
    IObserver* findListener(int id) const { return findObserver(id); }

    /// Hands the message to every listener before it returns; returns how many received it. The
    /// message stays the caller's.
    int notify(AlarmInformation* message) { return notifyObserver(message); }
};
