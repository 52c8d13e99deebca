#include <array>
#include <atomic>
#include <csignal>

#include "base/system/interrupt.h"

namespace tracksmith::system {
namespace {

struct Handled {
    int signal;
    struct sigaction previous;
};

std::atomic<bool> requested = false;
std::array<Handled, 3> handled{{{SIGINT, {}}, {SIGTERM, {}}, {SIGHUP, {}}}};

void OnSignal(int) {
    requested = true;
}

} // namespace

static_assert(std::atomic<bool>::is_always_lock_free, "set by a signal handler");

InterruptWatch::InterruptWatch() {
    requested = false;
    struct sigaction action = {};
    action.sa_handler = &OnSignal;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (Handled& entry : handled) {
        sigaction(entry.signal, &action, &entry.previous);
        if (entry.previous.sa_handler == SIG_IGN) {
            sigaction(entry.signal, &entry.previous, nullptr);
        }
    }
}

InterruptWatch::~InterruptWatch() {
    for (const Handled& entry : handled) {
        sigaction(entry.signal, &entry.previous, nullptr);
    }
}

bool InterruptWatch::Requested() noexcept {
    return requested;
}

void InterruptWatch::Request() noexcept {
    requested = true;
}

} // namespace tracksmith::system
