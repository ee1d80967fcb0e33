#include "platform/Observer.h"
#include "support/Gate.h"
#include "support/LogCapture.h"

#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>

namespace {

std::string served; // the names of the observers called, in order

struct Observer : IObserver {
    explicit Observer(char nameLetter) : name(nameLetter) {}
    void update(IMessage* /*message*/) override { served += name, action(); }

    char name;
    std::function<void()> action = [] {};
};

/// Notifies and returns who was called, in order.
std::string notify(ISubject& subject) {
    served.clear();
    IMessage message;
    const int count = subject.notifyObserver(&message);
    EXPECT_EQ(count, static_cast<int>(served.size()));
    return served;
}

TEST(ISubject, ServesItsObserversInTheOrderOfTheirAdding) {
    ISubject subject;
    Observer a('a'), b('b'), c('c');
    EXPECT_EQ(subject.addObserver(nullptr), 0);
    EXPECT_EQ(subject.addObserver(&b), 1);
    EXPECT_EQ(subject.addObserver(&a), 2);
    EXPECT_EQ(subject.addObserver(&c), 3);
    EXPECT_EQ(subject.addObserver(&a), 2) << "added before";
    EXPECT_EQ(subject.findObserver(2), &a);
    EXPECT_EQ(notify(subject), "bac");
    EXPECT_EQ(subject.removeObserver(2), 1);
    EXPECT_EQ(subject.removeObserver(2), 0);
    EXPECT_EQ(subject.findObserver(2), nullptr);
    EXPECT_EQ(subject.addObserver(&a), 4) << "ids are not used again";
    EXPECT_EQ(notify(subject), "bca");
}

TEST(ISubject, MayBeChangedFromInsideANotificationAndSurvivesExceptions) {
    ISubject subject;
    Observer a('a'), b('b'), c('c'), d('d');
    for (Observer* observer : {&a, &b, &c}) {
        subject.addObserver(observer);
    }
    a.action = [&] {
        subject.removeObserver(1); // itself
        subject.removeObserver(2);
        subject.addObserver(&d);
        throw std::runtime_error("no paper");
    };
    LogCapture log;
    EXPECT_EQ(notify(subject), "ac");
    log.expectOne({"no paper"});
    EXPECT_EQ(notify(subject), "cd");
}

TEST(ISubject, RemovalWaitsForACallInAnotherThread) {
    ISubject subject;
    Gate entered, removing;
    std::atomic<bool> left{false};
    Observer slow('s');
    slow.action = [&] {
        entered.open();
        removing.wait();
        for (int i = 0; i < 1000; ++i) { // a removal that does not wait gets ahead here
            std::this_thread::yield();
        }
        left = true;
    };
    subject.addObserver(&slow);
    std::thread notifier([&] { notify(subject); });
    EXPECT_TRUE(entered.wait());
    removing.open();
    EXPECT_EQ(subject.removeObserver(1), 1);
    EXPECT_TRUE(left);
    notifier.join();
}

} // namespace
