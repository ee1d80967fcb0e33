#pragma once

#include "platform/base/Export.h"

#include <memory>

namespace nvrhw {

class Subscription;

/// Keeps a callback registered for as long as it lives. Movable; an empty one has nothing
/// registered. It may outlive its board: no call comes any more then.
class NVRHW_API Registration {
public:
    Registration() = default; ///< nothing is registered

    /// For Board, which makes them.
    explicit Registration(std::shared_ptr<Subscription> subscription);

    /// As end().
    ~Registration();
    Registration(Registration&&) noexcept = default;

    /// Ends the one it held.
    Registration& operator=(Registration&& other) noexcept;

    /// Once it has returned no call of the callback runs or comes. It waits for a call in progress
    /// in another thread; from inside the callback itself it returns at once, and the call it was
    /// made from is the last. From inside a callback of another registration it does not wait
    /// either, and logs when that would have been needed.
    void end();

    /// As end(), but what waits by now is told before, in the calling thread, which may be beside
    /// calls of other registrations: for whoever wants to hear of what he has just done. From
    /// inside a callback it is end().
    void finish();

    /// From inside a callback: ends the registration that this call is made for, also while the
    /// first calls come and onInput() has not yet returned one. False when there is no such call.
    static bool endCurrent();

private:
    std::shared_ptr<Subscription> m_Subscription;
};

} // namespace nvrhw
