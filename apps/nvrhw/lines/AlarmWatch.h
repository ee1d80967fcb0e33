#pragma once

#include "alarm/IOAlarmInListener.h"
#include "alarm/IOAlarmInManager.h"
#include "lines/AlarmMailbox.h"
#include "lines/BoardLines.h"

/// Listens to the board's alarm inputs for as long as it lives.
class AlarmWatch {
public:
    /// Begins to watch: the mailbox gets the present state of every input, if `withPresent`, and
    /// from then on every change. The library logs what cannot be watched. Keeps the mailbox.
    AlarmWatch(const BoardLines& lines, AlarmMailbox& mailbox, bool withPresent);
    ~AlarmWatch();
    AlarmWatch(const AlarmWatch&) = delete;
    AlarmWatch& operator=(const AlarmWatch&) = delete;

    /// False when changes are not told.
    bool isWatching() const { return m_IsWatching; }

private:
    SafePointer<IOAlarmInManager> m_Inputs;
    IOAlarmInListener m_Listener;
    int m_ListenerId;
    bool m_IsWatching;
};
