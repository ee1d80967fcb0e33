#pragma once

#include "foundation/SafePointer.h"
#include "gpio/GPIOOperator.h"
#include "platform/GpioDetect.h"
#include "platform/HardwareConfigure.h"

#include <map>
#include <vector>

/// Shows each level change of the alarm outputs, as somebody with a meter at the terminals would
/// see it: it watches the lines themselves and knows nothing of what the library is asked to do.
class LevelTrace {
public:
    LevelTrace(const SafePointer<GPIOOperator>& gpio,
               const SafePointer<HardwareConfigItemList>& outputs);
    ~LevelTrace();
    LevelTrace(const LevelTrace&) = delete;
    LevelTrace& operator=(const LevelTrace&) = delete;

private:
    static void onChange(int signalNumber);
    void showChanges();

    SafePointer<GPIOOperator> m_GPIO;
    std::vector<IOInfo> m_Lines;
    std::map<int, int> m_Levels;
    GPIODetect m_Detect;

    static LevelTrace* s_Instance; // the handler is a plain function
};
