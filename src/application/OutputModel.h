#pragma once

#include "application/Output.h"
#include "application/dispatch/Dispatcher.h"
#include "application/dispatch/LifeGuard.h"
#include "application/dispatch/Subscription.h"
#include "foundation/SafePointer.h"
#include "gpio/GPIOOperator.h"
#include "gpio/IGPIOOperatorHook.h"
#include "platform/base/Mutex.h"

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace nvrhw {

/// Something that happened, as it waits for its callback; `kind` is an OutputChange::Kind.
struct OutputRecord {
    std::size_t source = 0;
    OutputChange::Kind kind = OutputChange::Began;
    Output::Operation operation = Output::None;
    int level = -1;
    Cause cause{};
    Moment time{};
    unsigned leftOut = 0;

    bool repeats(OutputChange::Kind /*last*/) const { return false; }
};

/// What the board's outputs do, told by the operator, and who is told of it. Thread-safe.
class OutputModel : public IGPIOOperatorHook, public std::enable_shared_from_this<OutputModel> {
public:
    /// The uses of the alarm outputs, in the order of the configuration.
    OutputModel(const SafePointer<GPIOOperator>& gpioOperator, std::vector<LineUse> uses,
                const std::shared_ptr<Dispatcher>& dispatcher,
                const std::shared_ptr<LifeGuard>& life);
    ~OutputModel() noexcept override;

    void driven(int group, int bit, int level, bool isDone) override;
    void begun(const GPIOOperation& operation) override;
    void ended(int group, int bit, int mode) override;
    void refused(const GPIOOperation& operation) override;

    std::vector<Output> outputs();
    Output at(std::size_t index) { return {shared_from_this(), index}; }
    const std::vector<LineUse>& uses() const { return m_Uses; }

    /// Has the operator carry this out: active, unless it is rest; a time of 0 has no end.
    enum Wish { HOLD, FLASH, PULSE, REST };
    Result operate(std::size_t index, Wish wish, Output::Time period, Output::Time time);

    OutputState state(std::size_t index);
    bool isInverted(std::size_t index);
    void setInverted(std::size_t index, bool isInverted);

    std::shared_ptr<Subscription> subscribe(OutputCallback callback, bool withDrives,
                                            std::size_t capacity);

    /// Brings to rest what this board has switched on: all of it, or what only the worker could
    /// end. Also when the board lets nobody else drive any more.
    void putToRest(bool isAll);

    /// Ends all subscriptions and lets the board go. No operation on it is going on any more.
    void close() NVRHW_EXCLUDES(m_Mutex);

private:
    using Told = RecordSubscription<OutputRecord>;
    struct Listener {
        std::weak_ptr<Told> told;
        bool withDrives;
    };
    struct Entry {
        bool isInverted = false;
        unsigned drives = 0; // that succeeded
        int driven = -1;     // the level of the last drive that succeeded
        bool isOwn = false;  // driven through this board
        Output::Operation running = Output::None;
        bool isPulsing = false;
        int timeOut = 0;    // of what runs, milliseconds; 0 for no end
        double start = 0.0; // of what runs, as GPIOOperateRecord::now()
        std::optional<Error> failure{};
    };

    Result carryOut(std::size_t index, Wish wish, Output::Time period, Output::Time time);
    OutputState look(std::size_t index, unsigned& drives);
    OutputChange changeOf(const OutputRecord& record);
    int activeLevel(std::size_t index) const NVRHW_REQUIRES(m_Mutex);
    std::optional<std::size_t> find(int group, int bit) const;
    void fail(std::size_t index, Error::Code code, const Cause& cause, int level)
        NVRHW_REQUIRES(m_Mutex);
    void tell(std::size_t index, OutputChange::Kind kind, Output::Operation operation,
              int level = -1, const Cause& cause = Cause()) NVRHW_REQUIRES(m_Mutex);

    SafePointer<GPIOOperator> m_Operator; // until the board closes
    const std::vector<LineUse> m_Uses;
    const std::shared_ptr<Dispatcher> m_Dispatcher;
    const std::shared_ptr<LifeGuard> m_Life;

    XQMutex m_Mutex;
    std::vector<Entry> m_Entries NVRHW_GUARDED_BY(m_Mutex); // as m_Uses
    std::vector<Listener> m_Listeners NVRHW_GUARDED_BY(m_Mutex);
    std::atomic<unsigned> m_Registrations{0};
};

} // namespace nvrhw
