#include "platform/Mutex.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>
#include <system_error>

namespace {

void lock(XQMutex& mutex, int times) NVRHW_NO_THREAD_SAFETY_ANALYSIS {
    const XQMutexManager outer(mutex, "Outer", 11);
    if (times > 1) {
        const XQMutexManager inner(mutex, "Inner", 22);
    }
}

TEST(XQMutex, RefusesToBeLockedTwiceByAThread) {
    LogCapture log;
    XQMutex mutex;
    EXPECT_THROW(lock(mutex, 2), std::system_error);
    log.expectOne({"Outer:11", "(Inner:22)"});
    std::thread([&] { lock(mutex, 1); }).join(); // it was released on the way out
}

} // namespace
