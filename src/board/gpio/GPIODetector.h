#pragma once

#include "board/gpio/GPIODetectLoop.h"
#include "platform/Thread.h"

#include <memory>
#include <string>

/// Puts a detection loop and its thread under the control of a GPIODetect. Results are 0 on
/// success; every failure is logged.
class GPIODetector {
public:
    int open(const std::string& device);
    void close();
    int setSignalHandler(int signalNumber, IGPIODetect::Handler handler);
    int addDetectLine(int processId, int group, int bit);
    int removeDetectLine(int processId, int group, int bit);
    int startDetect();
    int stopDetect();

private:
    const std::shared_ptr<GPIODetectLoop> m_Loop = std::make_shared<GPIODetectLoop>();
    GThread m_Thread{function<int>(&GPIODetectLoop::pass, m_Loop.get()), "GPIODetect",
                     function<int>(GThread::emptyFun), function<int>(GThread::emptyFun)};
};
