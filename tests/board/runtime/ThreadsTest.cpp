#include "platform/Observer.h"
#include "platform/Thread.h"
#include "platform/Time.h"
#include "support/Gate.h"
#include "support/LogCapture.h"

#include <atomic>
#include <functional>
#include <optional>

namespace {

/// Counts the passes of a thread, and the calls before the first and after the last one.
class GThreadTest : public testing::Test {
protected:
    int pass() {
        m_Passes.open();
        if (m_Passes.count() == 1) {
            m_ThreadEnd.openAtThreadEnd();
            throw std::runtime_error("out of order");
        }
        if (m_Passes.count() % 3 == 0) {
            TarvikTime::wait(TarvikTime(3600, 0)); // really an hour, were it not for the stop
            TarvikTime::wait(TarvikTime(3600, 0)); // does not even begin after it
        }
        return 0;
    }
    int aside() { return m_Asides.open(), 0; }

    Gate m_Passes, m_Asides, m_ThreadEnd;
    GThread m_Thread{function<int>(&GThreadTest::pass, this), "worker",
                     function<int>(&GThreadTest::aside, this),
                     function<int>(&GThreadTest::aside, this)};
};

TEST_F(GThreadTest, RepeatsUntilAnExceptionOrAStopWhichCutsWaitsShort) {
    LogCapture log;
    EXPECT_NE(m_Thread.start(), 0);
    EXPECT_TRUE(m_ThreadEnd.wait());
    EXPECT_EQ(m_Thread.running(), 0);
    EXPECT_EQ(m_Asides.count(), 1) << "none after an exception";
    log.expectOne({"out of order"});
    for (const int passes : {3, 6}) {
        EXPECT_NE(m_Thread.start(), 0);
        EXPECT_NE(m_Thread.start(), 0) << "it runs already";
        EXPECT_NE(m_Thread.running(), 0);
        EXPECT_TRUE(m_Passes.wait(passes));
        m_Thread.stop();
        EXPECT_EQ(m_Thread.running(), 0);
        EXPECT_EQ(m_Passes.count(), passes);
        EXPECT_EQ(m_Asides.count(), 1 + passes * 2 / 3);
    }
}

TEST(GThread, MayBeReplacedFromInside) {
    struct Relay {
        void runAnew(int (Relay::*body)()) {
            const function<int> nothing(GThread::emptyFun);
            m_Thread.reset();
            m_Thread.emplace(function<int>(body, this), "relay", nothing, nothing);
            EXPECT_NE(m_Thread->start(), 0);
        }
        int first() {
            m_FirstEnd.openAtThreadEnd();
            for (int i = 0; i < 2; ++i) {
                m_Thread->stop(); // its own, then another in that one's place
                EXPECT_EQ(m_Thread->running(), 0);
                runAnew(&Relay::second);
            }
            return 0;
        }
        int second() { return TarvikTime::wait(TarvikTime(3600, 0)), 0; }

        Gate m_FirstEnd;
        std::optional<GThread> m_Thread;
    } relay;
    relay.runAnew(&Relay::first);
    EXPECT_TRUE(relay.m_FirstEnd.wait());
    relay.m_Thread->stop();
}

struct Observer : IObserver {
    void update(IMessage* /*message*/) override { action(); }
    std::function<void()> action;
};

TEST(ISubject, ServesInTheOrderOfAddingAlsoWhenChangedFromInside) {
    ISubject subject;
    IMessage message;
    std::string served;
    Observer a, b, c;
    a.action = [&] { served += 'a'; };
    c.action = [&] { served += 'c'; };
    b.action = [&] {
        EXPECT_EQ(subject.removeObserver(1), 1); // itself
        EXPECT_EQ(subject.removeObserver(3), 1);
        EXPECT_EQ(subject.addObserver(&c), 4) << "ids are not used again";
        throw std::runtime_error("no paper");
    };
    EXPECT_EQ(subject.addObserver(nullptr), 0);
    EXPECT_EQ(subject.addObserver(&b), 1);
    EXPECT_EQ(subject.addObserver(&a), 2);
    EXPECT_EQ(subject.addObserver(&c), 3);
    EXPECT_EQ(subject.addObserver(&a), 2) << "added before";
    LogCapture log;
    EXPECT_EQ(subject.notifyObserver(&message), 2);
    log.expectOne({"no paper"});
    EXPECT_EQ(served, "a");
    EXPECT_EQ(subject.notifyObserver(&message), 2);
    EXPECT_EQ(served, "aac");
    EXPECT_EQ(subject.removeObserver(1), 0);
}

TEST(ISubject, RemovalWaitsForACallInAnotherThread) {
    ISubject subject;
    IMessage message;
    Gate entered;
    std::atomic<bool> left{false};
    Observer slow;
    slow.action = [&] {
        entered.open();
        std::this_thread::sleep_for(std::chrono::milliseconds(20)); // the time to go wrong in
        left = true;
    };
    subject.addObserver(&slow);
    std::thread notifier([&] { subject.notifyObserver(&message); });
    EXPECT_TRUE(entered.wait());
    EXPECT_EQ(subject.removeObserver(1), 1);
    EXPECT_TRUE(left);
    notifier.join();
}

} // namespace
