#pragma once

namespace tracksmith::system {

/// While it lives, a request to end the program (Ctrl+C, closing the terminal, SIGTERM) does not
/// end it but shows in Requested, so that it can finish cleanly. A second request of the same kind
/// ends the program. Requests that the program was started to ignore are ignored. One at a time.
class InterruptWatch {
public:
    InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;
    ~InterruptWatch();

    /// Whether the end was requested since the watch began. Any thread.
    static bool Requested() noexcept;
    /// Requests the end as the user would. Any thread.
    static void Request() noexcept;

    /// Becomes readable with the first request, so that an event loop can wait for it; belongs to
    /// the watch. -1 on Windows.
    static int Descriptor() noexcept;

    /// The counterpart on Windows: the handle of an event that is set by the first request; belongs
    /// to the watch. Null elsewhere.
    static void* Event() noexcept;
};

} // namespace tracksmith::system
