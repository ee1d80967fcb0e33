#pragma once

#include "alarm/IAlarmInHook.h"
#include "alarm/IOAlarmInManager.h"
#include "application/Input.h"
#include "application/dispatch/Dispatcher.h"
#include "application/dispatch/LifeGuard.h"
#include "application/dispatch/Subscription.h"
#include "foundation/SafePointer.h"
#include "platform/base/Mutex.h"

#include <atomic>
#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace nvrhw {

/// A change as it waits for its callback; `kind` is an Input::State.
struct InputRecord {
    std::size_t source = 0;
    Input::State kind = Input::Unreadable;
    int level = -1;
    Cause cause{};
    Moment time{};
    bool isPresent = false;
    unsigned leftOut = 0;

    bool repeats(Input::State last) const { return kind == last; }
};

/// The board's inputs as they were last seen, and who is told when that changes. Thread-safe.
class InputModel : public IAlarmInHook, public std::enable_shared_from_this<InputModel> {
public:
    /// The uses of the alarm inputs, in the order of the configuration.
    InputModel(const SafePointer<IOAlarmInManager>& manager, std::vector<LineUse> uses,
               const std::shared_ptr<Dispatcher>& dispatcher,
               const std::shared_ptr<LifeGuard>& life);
    ~InputModel() noexcept override;

    void judged(const std::vector<IOState>& states) override;
    void validLevelSet(int id, int level) override;
    void released() override;

    std::vector<Input> inputs();
    Input at(std::size_t index) { return {shared_from_this(), index}; }
    const std::vector<LineUse>& uses() const { return m_Uses; }

    /// What is known of an input: the last record of it.
    InputRecord last(std::size_t index);
    bool isInverted(std::size_t index);
    Result setInverted(std::size_t index, bool isInverted);

    /// Of all inputs, or of those with this index.
    std::shared_ptr<Subscription> subscribe(InputCallback callback, std::optional<std::size_t> only,
                                            bool isInPlace, std::size_t capacity);

    /// Ends all subscriptions and lets the board go. No operation on it is going on any more.
    void close() NVRHW_EXCLUDES(m_Mutex);

private:
    using Told = RecordSubscription<InputRecord>;
    struct Listener {
        std::weak_ptr<Told> told;
        std::optional<std::size_t> only;
    };
    struct Entry {
        int userLevel = 0;
        bool isKnown = false; // there was a first look
        InputRecord last{};
    };

    InputChange changeOf(const InputRecord& record);
    void see(std::size_t index, int level) NVRHW_REQUIRES(m_Mutex);
    void tell(const InputRecord& record) NVRHW_REQUIRES(m_Mutex);
    std::shared_ptr<Told> nextWithMail(unsigned& id) NVRHW_EXCLUDES(m_Mutex);

    SafePointer<IOAlarmInManager> m_Manager; // until the board closes
    const std::vector<LineUse> m_Uses;
    const std::shared_ptr<Dispatcher> m_Dispatcher;
    const std::shared_ptr<LifeGuard> m_Life;

    XQMutex m_Mutex;
    std::vector<Entry> m_Entries NVRHW_GUARDED_BY(m_Mutex); // as m_Uses
    std::map<unsigned, Listener> m_Listeners NVRHW_GUARDED_BY(m_Mutex);
    unsigned m_LastListener NVRHW_GUARDED_BY(m_Mutex) = 0;
    std::chrono::steady_clock::time_point m_LastLook NVRHW_GUARDED_BY(m_Mutex){};
    std::atomic<unsigned> m_Registrations{0};
};

} // namespace nvrhw
