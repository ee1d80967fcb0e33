#include "platform/GpioDetect.h"

#include "board/gpio/GPIODetector.h"
#include "platform/Diagnostics.h"

GPIODetect::GPIODetect() : m_DeviceName("/dev/gpiodrv"), m_Detector(new GPIODetector) {}

GPIODetect::~GPIODetect() noexcept = default;

int GPIODetect::open() { return m_Detector->open(GlobalEnv::getInstance()->resolve(m_DeviceName)); }

void GPIODetect::close() { m_Detector->close(); }

int GPIODetect::setSignalHandler(int signalNumber, Handler handler) {
    return m_Detector->setSignalHandler(signalNumber, handler);
}

int GPIODetect::addDetectLine(int processId, int group, int bit) {
    return m_Detector->addDetectLine(processId, group, bit);
}

int GPIODetect::removeDetectLine(int processId, int group, int bit) {
    return m_Detector->removeDetectLine(processId, group, bit);
}

int GPIODetect::startDetect() { return m_Detector->startDetect(); }

int GPIODetect::stopDetect() { return m_Detector->stopDetect(); }
