#pragma once

#include "alarm/IAlarmIn.h"
#include "alarm/IAlarmInHook.h"
#include "alarm/IAlarmProducer.h"
#include "config/MachineConfigurationDetail.h"
#include "foundation/SafePointer.h"
#include "gpio/GPIOOperator.h"
#include "platform/Gpio.h"
#include "platform/HardwareConfigure.h"
#include "platform/base/Allocation.h"
#include "platform/base/Export.h"
#include "platform/base/Mutex.h"
#include "platform/base/Spare.h"

#include <atomic>
#include <map>
#include <memory>
#include <vector>

/// The service "IOAlarmInManager": owns the alarm inputs of the hardware configuration and tells
/// the listeners registered with it about every change of an input's alarm state.
///
/// An input's id is the id of its item in the hardware configuration; of several items with one id
/// the first is the input. Thread-safe once init() has returned. Listeners are called with the
/// manager's lock held: from inside a notification they must not call getValidLevel(),
/// setValidLevel(), notifyAlarmConsumers() or uninit(), which would raise std::system_error, nor
/// stop the alarm input listener or the factory, which would wait for the notification's own end.
class NVRHW_API IOAlarmInManager : public IAlarmProducer {
public:
    NVRHW_TRACKED

    /// The inputs by their ids.
    using AlarmInTable = std::map<int, SafePointer<IAlarmIn>>;

    IOAlarmInManager() = default;
    ~IOAlarmInManager() override;

    /// Takes the alarm input items of `detail` and keeps it. Raises XQRuntimeError when `detail`
    /// is empty or its alarm input section was not read.
    void setMachineConfigurationDetail(SafePointer<MachineConfigurationDetail>& detail);
    void setGPIOOperator(const SafePointer<GPIOOperator>& gpioOperator);

    /// Builds the inputs. Inputs that exist already are kept.
    void init();
    void initRealIOAlarmIn();

    /// Drops all inputs.
    void uninit() NVRHW_EXCLUDES(m_Mutex);

    /// The input's valid level (see IAlarmIn::setValidLevel()): 1, or 0 with `level` untouched
    /// when there is no such input.
    int getValidLevel(int id, int& level) NVRHW_EXCLUDES(m_Mutex);

    /// 1, or 0 when there is no such input.
    int setValidLevel(int id, int level) NVRHW_EXCLUDES(m_Mutex);

    /// The same for the inputs of another table, under the lock of this manager.
    int getValidLevel(AlarmInTable& table, int id, int& level) NVRHW_EXCLUDES(m_Mutex);
    int setValidLevel(AlarmInTable& table, int id, int level) NVRHW_EXCLUDES(m_Mutex);

    /// Reads the lines of all inputs in one batch; lines that cannot be read are left out.
    void getRealLevel(std::vector<IOState>& states);

    /// The same for the real inputs; there are no virtual ones, `states` is then untouched.
    void getLevel(bool isVirtual, std::vector<IOState>& states);

    /// Reads and judges all inputs and sends one message for each whose alarm state changed; the
    /// first call after init() reports the present state of every input. Returns 0.
    /// When others judge while this call is reading, it reads once more, and leaves it at theirs
    /// if that happens twice: the later of them have been read after this call began.
    int notifyAlarmConsumers(bool isVirtual) NVRHW_EXCLUDES(m_Mutex);

    /// Who is told from now on what is found at the lines; null for nobody. It is first told the
    /// valid level of every input. There is one at a time, which an nvrhw::Board is while it is
    /// open. A call of the one before may still be going on when this returns: it lives until then.
    void setHook(const std::shared_ptr<IAlarmInHook>& hook) NVRHW_EXCLUDES(m_Mutex);

    /// Reads the lines and tells the hook alone: no input is judged and no message sent, so that
    /// the first notification still reports the present state of every input.
    void tellHook() NVRHW_EXCLUDES(m_Mutex);

private:
    using Hook = std::shared_ptr<IAlarmInHook>;
    enum Purpose { FOR_ALL, FOR_HOOK };

    void look(bool isVirtual, Purpose purpose) NVRHW_EXCLUDES(m_Mutex);
    void judge(const std::vector<IOState>& states, bool isVirtual) NVRHW_REQUIRES(m_Mutex);
    void notifyChange(int id, bool isVirtual, int alarm) NVRHW_REQUIRES(m_Mutex);

    AlarmInTable m_AlarmIns NVRHW_GUARDED_BY(m_Mutex);
    XQMutex m_Mutex; // guards the table and every call into an input

    // Of batches; changed under m_Mutex, read without.
    std::atomic<unsigned> m_Judgements{0};
    std::atomic<unsigned> m_HookLooks{0}; // those that judged no input
    Hook m_Hook NVRHW_GUARDED_BY(m_Mutex);

    SafePointer<HardwareConfigItemList> m_AlarmInConfigItemList;
    std::vector<IOInfo> m_Lines;          // of the list's items, as init() found them
    Spare<std::vector<IOState>> m_States; // of a batch
    SafePointer<GPIOOperator> m_GPIOOperator;
    SafePointer<MachineConfigurationDetail> m_Detail;
};

/// From configuration items to the requests of a batch read.
namespace NS_IOAlarmInManager {

/// Replaces `infos` by one request per item, in order. An item that is no GPIO signal raises
/// XQRuntimeError.
NVRHW_API void changeHardwareConfigItem2IOInfo(const HardwareConfigItemList::Items& items,
                                               std::vector<IOInfo>& infos);

/// The same for items that are GPIO signals already.
NVRHW_API void
changeGPIOSignalConfigItem2IOInfo(const std::vector<SafePointer<GPIOSignalConfigItem>>& items,
                                  std::vector<IOInfo>& infos);

} // namespace NS_IOAlarmInManager
