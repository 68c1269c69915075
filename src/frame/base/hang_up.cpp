#include "frame/base/hang_up.h"

#include <poll.h>

#include <atomic>
#include <cerrno>
#include <csignal>

namespace {

/// Set by SIGHUP, for good.
std::atomic<bool> has_hung_up{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal may come at any moment");

}  // namespace

void EndInputOnHangUp() {
    struct sigaction before {};
    if (sigaction(SIGHUP, nullptr, &before) == 0 && before.sa_handler == SIG_IGN) return;
    struct sigaction action {};
    action.sa_handler = [](int) { has_hung_up = true; };
    sigemptyset(&action.sa_mask);
    sigaction(SIGHUP, &action, nullptr);
}

bool HasHungUp() { return has_hung_up; }

bool WaitUntilReady(int descriptor, short events) {
    // A signal that came between the question and the wait would be slept over: it is held back but for the wait
    // itself.
    sigset_t hang_up;
    sigset_t before;
    sigemptyset(&hang_up);
    sigaddset(&hang_up, SIGHUP);
    pthread_sigmask(SIG_BLOCK, &hang_up, &before);
    pollfd asked{.fd = descriptor, .events = events, .revents = 0};
    while (!has_hung_up && ppoll(&asked, 1, nullptr, &before) < 0 && errno == EINTR) continue;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return !has_hung_up;
}
