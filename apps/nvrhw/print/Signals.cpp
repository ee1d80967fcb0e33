#include "print/Signals.h"

#include <pthread.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace {

constexpr int WANTED[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP, SIGWINCH};

} // namespace

Signals::Signals() : m_Signals() {
    sigemptyset(&m_Signals);
    for (const int signal : WANTED) {
        sigaddset(&m_Signals, signal);
    }
    pthread_sigmask(SIG_BLOCK, &m_Signals, nullptr);
    m_File = signalfd(-1, &m_Signals, SFD_CLOEXEC | SFD_NONBLOCK);
}

Signals::~Signals() {
    close(m_File);
    pthread_sigmask(SIG_UNBLOCK, &m_Signals, nullptr);
}

int Signals::take() const {
    signalfd_siginfo info{};
    return read(m_File, &info, sizeof info) == sizeof info ? static_cast<int>(info.ssi_signo) : 0;
}
