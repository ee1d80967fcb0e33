#include "print/EndSignals.h"

#include <initializer_list>
#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace {

int blockAndOpen() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction present {};
        sigaction(signal, nullptr, &present);
        if (present.sa_handler != SIG_IGN) { // as under nohup, or behind a shell's "&"
            sigaddset(&signals, signal);
        }
    }
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signalfd(-1, &signals, SFD_CLOEXEC);
}

} // namespace

EndSignals::EndSignals() : m_File(blockAndOpen()) {}

EndSignals::~EndSignals() { close(m_File); }

bool EndSignals::waitFor(int milliseconds) const {
    pollfd wanted{m_File, POLLIN, 0};
    return poll(&wanted, 1, milliseconds) > 0;
}
