#include "application/Signal.h"

#include "application/Error.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <semaphore.h>

// One wait at a time, whoever sets `isWaiting` has it. A handler may still run, in another thread,
// when its wait is over: what it touches lives as long as the process, and the next wait takes no
// wake-up for a signal that does not stand in `caught`.

namespace nvrhw {

namespace {

constexpr int SIGNALS[] = {SIGINT, SIGTERM};

std::atomic<bool> isWaiting{false};
std::atomic<int> caught{0}; // the first signal of this wait
sem_t wakeUp;

extern "C" void takeSignal(int number) {
    const int error = errno;
    int none = 0;
    caught.compare_exchange_strong(none, number);
    sem_post(&wakeUp);
    errno = error;
}

class Waiting {
public:
    Waiting() {
        if (isWaiting.exchange(true)) {
            throw Error(Error::Busy, "another thread waits for a signal already");
        }
        static const int made = sem_init(&wakeUp, 0, 0); // never raises, never ends
        static_cast<void>(made);
        caught = 0;
        install();
    }

    ~Waiting() {
        pthread_sigmask(SIG_SETMASK, &m_OldMask, nullptr);
        for (std::size_t i = 0; i < std::size(SIGNALS); ++i) {
            sigaction(SIGNALS[i], &m_Old[i], nullptr);
        }
        isWaiting = false;
    }

    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

private:
    void install() {
        struct sigaction action = {};
        action.sa_handler = takeSignal;
        action.sa_flags = SA_RESTART;
        sigset_t handled;
        sigemptyset(&handled);
        for (std::size_t i = 0; i < std::size(SIGNALS); ++i) {
            sigaction(SIGNALS[i], nullptr, &m_Old[i]);
            if (m_Old[i].sa_handler != SIG_IGN) {
                sigaction(SIGNALS[i], &action, nullptr);
                sigaddset(&handled, SIGNALS[i]);
            }
        }
        pthread_sigmask(SIG_UNBLOCK, &handled, &m_OldMask);
    }

    struct sigaction m_Old[std::size(SIGNALS)] = {};
    sigset_t m_OldMask = {};
};

} // namespace

int waitForSignal() {
    const Waiting waiting;
    while (caught == 0) {
        sem_wait(&wakeUp); // a signal of another kind may end it early
    }
    return caught;
}

} // namespace nvrhw
