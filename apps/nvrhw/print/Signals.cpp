#include "print/Signals.h"

#include <poll.h>
#include <pthread.h>
#include <sys/signalfd.h>
#include <unistd.h>

Signals::Signals(std::initializer_list<int> wanted) : m_Signals() {
    sigemptyset(&m_Signals);
    for (const int signal : wanted) {
        struct sigaction present {};
        sigaction(signal, nullptr, &present);
        if (present.sa_handler != SIG_IGN) {
            sigaddset(&m_Signals, signal);
        }
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

int Signals::waitFor(int milliseconds) const {
    pollfd wanted{m_File, POLLIN, 0};
    poll(&wanted, 1, milliseconds);
    return take();
}
