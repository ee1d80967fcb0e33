#include "platform/Thread.h"
#include "platform/Time.h"
#include "support/Gate.h"
#include "support/LogCapture.h"
#include "support/ManualClock.h"

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <pthread.h>

namespace {

/// A thread that runs the action, and gates that count the calls of its callables.
class Worker {
public:
    explicit Worker(std::function<void()> action) : m_Action(std::move(action)) {}

    Gate passes, began, ended;
    std::unique_ptr<GThread> thread{
        new GThread(function<int>(&Worker::pass, this), "a name of more than 15",
                    function<int>(&Worker::begin, this), function<int>(&Worker::end, this))};

private:
    int pass() { return passes.open(), m_Action(), 0; }
    int begin() { return began.open(), 0; }
    int end() { return ended.open(), 0; }

    std::function<void()> m_Action;
};

double seconds(const TarvikTime& time) { return time.getSeconds() + time.getMicroseconds() / 1e6; }

TEST(GThread, RepeatsItsBodyUntilItIsStoppedAndStartsAgain) {
    char name[16] = "";
    Worker worker([&] { pthread_getname_np(pthread_self(), name, sizeof(name)); });
    EXPECT_EQ(worker.thread->running(), 0);
    for (int run = 1; run <= 3; ++run) {
        const int before = worker.passes.count();
        EXPECT_NE(worker.thread->start(), 0);
        EXPECT_NE(worker.thread->start(), 0) << "it runs already";
        EXPECT_NE(worker.thread->running(), 0);
        EXPECT_TRUE(worker.passes.wait(before + 3));
        worker.thread->stop();
        EXPECT_EQ(worker.thread->running(), 0);
        EXPECT_EQ(worker.began.count(), run);
        EXPECT_EQ(worker.ended.count(), run);
    }
    EXPECT_STREQ(name, "a name of more ");
}

TEST(GThread, EndsByAnExceptionOrAStopFromInsideAndStartsAgain) {
    for (const bool throws : {true, false}) {
        LogCapture log;
        Gate threadEnd;
        Worker worker([&] {
            threadEnd.openAtThreadEnd();
            throws ? throw std::runtime_error("out of order") : worker.thread->stop();
        });
        for (int run = 1; run <= 2; ++run) {
            EXPECT_NE(worker.thread->start(), 0);
            EXPECT_TRUE(threadEnd.wait(run));
            EXPECT_EQ(worker.thread->running(), 0);
            EXPECT_EQ(worker.passes.count(), run);
            EXPECT_EQ(worker.ended.count(), throws ? 0 : run);
        }
        EXPECT_EQ(log.take().find("out of order") != std::string::npos, throws);
    }
}

TEST(GThread, MayBeDestroyedFromInside) {
    for (int round = 0; round < 50; ++round) {
        Gate threadEnd;
        Worker worker([&] {
            threadEnd.openAtThreadEnd();
            worker.thread.reset(); // while start() may still be on its way back
        });
        GThread* const thread = worker.thread.get();
        EXPECT_NE(thread->start(), 0);
        ASSERT_TRUE(threadEnd.wait());
        EXPECT_EQ(worker.passes.count(), 1);
        EXPECT_EQ(worker.ended.count(), 1);
    }
}

TEST(GThread, SaysWhenItCannotStart) {
    Worker worker([] {});
    pthread_attr_t usual, absurd;
    ASSERT_EQ(pthread_getattr_default_np(&usual), 0);
    ASSERT_EQ(pthread_attr_init(&absurd), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&absurd, SIZE_MAX / 4), 0);
    ASSERT_EQ(pthread_setattr_default_np(&absurd), 0);
    LogCapture log;
    EXPECT_EQ(worker.thread->start(), 0);
    EXPECT_EQ(worker.thread->running(), 0);
    EXPECT_EQ(pthread_setattr_default_np(&usual), 0);
    log.expectOne({"cannot be started"});
    worker.thread->stop();
    EXPECT_NE(worker.thread->start(), 0);
    EXPECT_TRUE(worker.passes.wait());
    pthread_attr_destroy(&usual);
}

TEST(TarvikTime, WaitsForTheDuration) {
    const double begin = seconds(TarvikTime::currentTime());
    TarvikTime::wait(TarvikTime(0, 20000));
    TarvikTime::wait(TarvikTime(-1, 0));
    EXPECT_GE(seconds(TarvikTime::currentTime()) - begin, 0.0199); // rounded to microseconds
    EXPECT_EQ(TarvikTime(1, 2500000).getSeconds(), 3);
    EXPECT_EQ(TarvikTime(1, -1).getMicroseconds(), 999999);
}

TEST(TarvikTime, FollowsAManualClockWhileStopCutsWaitsShort) {
    Worker worker([] {
        TarvikTime::wait(TarvikTime(3600, 0)); // really an hour, were it not for the stop
        TarvikTime::wait(TarvikTime(3600, 0)); // does not even begin after it
    });
    const auto run = [&] {
        const int before = worker.passes.count();
        EXPECT_NE(worker.thread->start(), 0);
        EXPECT_TRUE(worker.passes.wait(before + 1));
        worker.thread->stop();
        EXPECT_EQ(worker.passes.count(), before + 1);
    };
    run();
    ManualClock clock;
    const double begin = seconds(TarvikTime::currentTime());
    TarvikTime::wait(TarvikTime(3600, 0));
    clock.advance(1500000);
    run();
    EXPECT_DOUBLE_EQ(seconds(TarvikTime::currentTime()) - begin, 3601.5);
}

} // namespace
