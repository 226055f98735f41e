#include "platform/end_signals.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>

namespace platform {

namespace {

constexpr int kSignals[] = {SIGTERM, SIGHUP, SIGINT};

// A signal's handler is given nothing but its number, so this is the one place that it can know.
std::atomic<int> writeEnd = -1;
static_assert(std::atomic<int>::is_always_lock_free);

extern "C" void NoteSignal(int) {
    const int before = errno;
    const char mark = 0;
    // A full pipe has said it already.
    [[maybe_unused]] const ssize_t written = write(writeEnd, &mark, 1);
    errno = before;
}

void SetHandler(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int signal : kSignals)
        sigaction(signal, &action, nullptr);
}

}  // namespace

EndSignals::EndSignals() {
    if (pipe2(ends_, O_CLOEXEC | O_NONBLOCK) != 0) return;
    writeEnd = ends_[1];
    SetHandler(NoteSignal);
}

EndSignals::~EndSignals() {
    if (ends_[0] < 0) return;
    SetHandler(SIG_DFL);
    writeEnd = -1;
    close(ends_[0]);
    close(ends_[1]);
}

bool EndSignals::Came() const {
    pollfd mark{ends_[0], POLLIN, 0};
    return poll(&mark, 1, 0) > 0;
}

}  // namespace platform
