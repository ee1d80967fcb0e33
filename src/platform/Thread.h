#pragma once

#include "foundation/function.h"
#include "platform/base/Allocation.h"
#include "platform/base/Export.h"

#include <memory>
#include <string>

/// A thread that runs a callable again and again until it is stopped.
///
/// Stop contract: stop() asks the thread to end, cuts short a TarvikTime::wait() it is in, and
/// returns when the pass in progress (and `second`/`third`) has ended; no pass runs afterwards.
/// Called from inside the thread itself it only asks, and the thread ends after the present pass.
/// start(), stop() and running() may be called from any thread.
class NVRHW_API GThread {
public:
    NVRHW_TRACKED

    /// `body` is called for each pass, its result is not used; `second` is called once in the new
    /// thread before the first pass, `third` after the last one. `name` is what tools show for the
    /// thread (the kernel keeps its first 15 characters).
    GThread(function<int> body, const std::string& name, function<int> second, function<int> third);

    /// Stops the thread; when it is called from inside, the thread still ends its present pass.
    ~GThread();
    GThread(const GThread&) = delete;
    GThread& operator=(const GThread&) = delete;

    /// Non-zero when the thread runs afterwards (also when it ran already); 0 when it could not
    /// be started, which is logged. A stopped thread can be started again.
    int start();

    /// Ends the thread, as the stop contract says; does nothing when it does not run.
    void stop();

    /// Non-zero from start() until the thread was stopped or ended by an exception out of a
    /// callable (which is logged).
    int running() const;

    /// Does nothing and returns 0: for `second` and `third`.
    static int emptyFun();

private:
    struct Impl;
    std::unique_ptr<Impl> m_Impl;
};
