#include "alarm/IOAlarmOutManager.h"
#include "application/Service.h"
#include "application/Signal.h"
#include "support/LogCapture.h"
#include "support/ServiceTest.h"

#include <csignal>
#include <functional>
#include <iostream>
#include <thread>

namespace {

/// Raises at its end when it was told to.
struct Ending {
    ~Ending() noexcept(false) {
        ++ended;
        if (isRaising) {
            throw XQRuntimeError("going");
        }
    }
    bool isRaising;
    int& ended;
};

TEST(share, HoldsAnObjectAndNeverRaises) {
    int ended = 0;
    EXPECT_EQ(nvrhw::share(SafePointer<Ending>()), nullptr);
    LogCapture log;
    for (const bool isRaising : {false, true}) {
        ended = 0;
        SafePointer<Ending> pointer(new Ending{isRaising, ended});
        std::function<Ending*()> held = [shared = nvrhw::share(pointer)] { return shared.get(); };
        pointer.dec_reference();
        EXPECT_EQ(ended, 0);
        EXPECT_EQ(&held()->ended, &ended);
        held = nullptr;
        EXPECT_EQ(ended, 1);
        log.expect(isRaising ? 1 : 0, {isRaising ? "SafePointer: going" : ""});
    }
}

class ServicesTest : public ServiceTest {};

void writeWhatIsMissing() {
    try {
        nvrhw::service<GPIO>(); // which is registered as an IGPIO
    } catch (const nvrhw::Error& error) {
        std::cerr << (error.code() == nvrhw::Error::NoService ? error.what() : "wrong code");
    }
}

// In a process of their own, as the services stay to its end.
TEST_F(ServicesTest, AreFoundByTheirTypeAndListedOtherwise) {
    EXPECT_EXIT(
        (writeWhatIsMissing(), std::exit(0)), testing::ExitedWithCode(0),
        "^there is no service of type GPIO: the HardwareServiceFactory has not been started$");
    const auto start = [] {
        HardwareServiceFactory::getInstance()->start();
        nvrhw::service<IOAlarmOutManager>()->triggerAlarm(1);
        int level = 0;
        nvrhw::service<IGPIO>()->get(2, 0, level);
        writeWhatIsMissing();
        std::exit(level);
    };
    EXPECT_EXIT(start(), testing::ExitedWithCode(1),
                "GPIO: the HardwareServiceFactory has I2CController \\(SafePointer<I_I2CController>"
                "\\), .* systemTime \\(SafePointer<ISystemTime>\\)$");
}

/// Has handlers of an application's in place, and waits for a signal in a thread of its own.
class SignalTest : public testing::Test {
protected:
    SignalTest() { std::signal(SIGINT, earlier), std::signal(SIGTERM, earlier); }
    ~SignalTest() override { std::signal(SIGINT, SIG_DFL), std::signal(SIGTERM, SIG_DFL); }

    static void earlier(int /*number*/) {}
    static void (*handlerOf(int number))(int) {
        struct sigaction action = {};
        sigaction(number, nullptr, &action);
        return action.sa_handler;
    }

    /// What waitForSignal() in another thread returns when `send` is run once it waits.
    static int caught(const std::function<void()>& send) {
        int number = 0;
        std::thread waiting([&number] { number = nvrhw::waitForSignal(); });
        while (handlerOf(SIGTERM) == earlier) {
            std::this_thread::yield();
        }
        EXPECT_THROW(nvrhw::waitForSignal(), nvrhw::Error) << "one at a time";
        send();
        waiting.join();
        EXPECT_EQ(handlerOf(SIGTERM), earlier);
        return number;
    }
};

TEST_F(SignalTest, ArrivesInAnyThreadAndLeavesEverythingAsItWas) {
    for (const int number : {SIGINT, SIGTERM}) {
        EXPECT_EQ(caught([number] { std::raise(number); }), number) << "in this thread";
        sigset_t signals, old;
        sigemptyset(&signals);
        sigaddset(&signals, number);
        pthread_sigmask(SIG_BLOCK, &signals, &old);
        EXPECT_EQ(caught([number] { kill(getpid(), number); }), number) << "blocked elsewhere";
        pthread_sigmask(SIG_SETMASK, &old, nullptr);
    }
    std::signal(SIGINT, SIG_IGN);
    EXPECT_EQ(caught([] {
                  std::raise(SIGINT);
                  EXPECT_EQ(handlerOf(SIGINT), SIG_IGN);
                  std::raise(SIGTERM);
              }),
              SIGTERM);
}

} // namespace
