#pragma once

#include "platform/base/Allocation.h"
#include "platform/base/Export.h"

#include <memory>
#include <string>

/// Watches input lines and tells a handler that some of them may have changed. Results are 0 on
/// success. The operations are for one controlling thread; stopDetect() may be called from any.
class NVRHW_API IGPIODetect {
public:
    /// Runs in an ordinary thread that may block and allocate; the argument is the signal number
    /// installed with it.
    using Handler = void (*)(int);

    virtual ~IGPIODetect() noexcept(false) {}

    /// GPIODetect says what each of the operations promises.
    virtual int open() = 0;
    virtual void close() = 0;
    virtual int setSignalHandler(int signalNumber, Handler handler) = 0;
    virtual int addDetectLine(int processId, int group, int bit) = 0;
    virtual int removeDetectLine(int processId, int group, int bit) = 0;
    virtual int startDetect() = 0;
    virtual int stopDetect() = 0;
};

/// The detector over the banks of one device.
///
/// However many changes come, and however fast: the handler runs once more after the last of
/// them. Changes that fall together give one call. The loss of a bank or of a line is such a
/// change, and so is its return; while it is lost there are no calls for it. While a line of a GPIO
/// chip has no interrupt, or its last reading failed, the handler runs every 200 ms. An exception
/// out of the handler is logged and detection goes on.
class NVRHW_API GPIODetect : public IGPIODetect {
public:
    NVRHW_TRACKED

    GPIODetect();

    /// Stops detection, as stopDetect().
    ~GPIODetect() noexcept override;

    /// Fails, with a log line, when the device is not there. Forgets the lines added before;
    /// detection that runs goes on.
    int open() override;

    /// Stops detection and forgets the lines and the handler.
    void close() override;
    int setSignalHandler(int signalNumber, Handler handler) override;

    /// A line that is not there is watched for: it reports from the moment it appears. Fails, with
    /// a log line, when `processId` is not this process or a number is negative.
    int addDetectLine(int processId, int group, int bit) override;
    int removeDetectLine(int processId, int group, int bit) override;

    /// Does not call the handler for the levels found at start.
    int startDetect() override;

    /// Returns when no call of the handler is running any more; from inside the handler it
    /// returns at once, and the call it was made from is the last.
    int stopDetect() override;

    /// The device; to be set before open(). Default "/dev/gpiodrv".
    std::string m_DeviceName;

private:
    struct Impl;
    std::unique_ptr<Impl> m_Impl;
};
