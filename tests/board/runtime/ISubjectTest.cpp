#include "platform/Observer.h"
#include "support/Gate.h"
#include "support/LogCapture.h"

#include <atomic>
#include <functional>

namespace {

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
