#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

#include "base/system/interrupt.h"

namespace tracksmith::system {
namespace {

struct Handled {
    int signal;
    struct sigaction previous;
};

std::atomic<bool> requested = false;
std::array<Handled, 3> handled{{{SIGINT, {}}, {SIGTERM, {}}, {SIGHUP, {}}}};

// Both ends of the pipe that wakes an event loop; -1 without one.
std::atomic<int> readEnd = -1;
std::atomic<int> writeEnd = -1;

void NoteRequest() noexcept {
    requested = true;
    const char byte = 0;
    // Without room in the pipe the event loop has been woken already.
    [[maybe_unused]] const auto written = write(writeEnd, &byte, 1);
}

void OnSignal(int) {
    const int before = errno;
    NoteRequest();
    errno = before;
}

} // namespace

static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free,
              "used by a signal handler");

InterruptWatch::InterruptWatch() {
    requested = false;
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) == 0) {
        readEnd = ends[0];
        writeEnd = ends[1];
    }
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
    for (std::atomic<int>* end : {&writeEnd, &readEnd}) {
        if (const int descriptor = end->exchange(-1); descriptor >= 0) {
            close(descriptor);
        }
    }
}

bool InterruptWatch::Requested() noexcept {
    return requested;
}

void InterruptWatch::Request() noexcept {
    NoteRequest();
}

int InterruptWatch::Descriptor() noexcept {
    return readEnd;
}

void* InterruptWatch::Event() noexcept {
    return nullptr;
}

} // namespace tracksmith::system
