#pragma once

#include "alarm/IOAlarmInManager.h"
#include "application/Line.h"
#include "foundation/SafePointer.h"
#include "platform/GpioDetect.h"

#include <vector>

namespace nvrhw {

/// Has the detector watch a board's inputs and the manager look at them whenever one of them may
/// have changed, for as long as it lives. One at a time: the detector's handler is a plain function
/// without an object. It is this room's own, so that the factory may be started beside it.
class InputWatch {
public:
    /// Keeps the manager.
    explicit InputWatch(const SafePointer<IOAlarmInManager>& manager);

    /// No look is going on any more when it has returned.
    ~InputWatch();
    InputWatch(const InputWatch&) = delete;
    InputWatch& operator=(const InputWatch&) = delete;

    /// False, with the cause in the log, when the detector cannot be opened or refuses a line.
    bool start(const std::vector<LineUse>& uses);

private:
    static void look(int signalNumber);

    GPIODetect m_Detector;
};

} // namespace nvrhw
