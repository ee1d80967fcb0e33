#pragma once

#include "alarm/IOAlarmInListener.h"
#include "lines/AlarmInputs.h"
#include "lines/AlarmQueue.h"
#include "lines/BoardLines.h"

/// Listens to the board's alarm inputs for as long as it lives.
class AlarmWatch {
public:
    /// Begins to watch: the queue then holds the present state of every input, if `withPresent`,
    /// and from then on every change. Raises CommandError when the lines cannot be watched.
    explicit AlarmWatch(bool withPresent);
    ~AlarmWatch();
    AlarmWatch(const AlarmWatch&) = delete;
    AlarmWatch& operator=(const AlarmWatch&) = delete;

    AlarmQueue& queue() { return m_Queue; }
    const BoardLines& lines() const { return m_Lines; }

private:
    BoardLines m_Lines;
    AlarmInputs m_Inputs;
    AlarmQueue m_Queue;
    IOAlarmInListener m_Listener;
    int m_ListenerId;
};
