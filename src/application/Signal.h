#pragma once

#include "platform/base/Export.h"

namespace nvrhw {

/// Blocks until the process is asked to end by SIGINT (Ctrl-C) or SIGTERM, in whichever thread it
/// arrives, and returns the signal's number. One that the process ignores, as SIGINT in a script's
/// background, stays ignored and is not waited for.
///
/// While it waits the two have a handler of its own, and the calling thread takes them even where
/// it had blocked them; before it returns, everything is as it was. A signal that comes later does
/// what it did before, so that a second Ctrl-C ends a program whose end takes too long.
///
/// May be called again, but not by two threads at once: that raises Error::Busy.
NVRHW_API int waitForSignal();

} // namespace nvrhw
