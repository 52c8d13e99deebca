#include "base/system/interrupt.h"

#include <csignal>
#include <gtest/gtest.h>
#include <poll.h>

namespace tracksmith::system {
namespace {

volatile std::sig_atomic_t reached = 0;

void NoteSignal(int) {
    reached = 1;
}

TEST(InterruptWatchTest, HoldsTheSignalsBackWhileItLives) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        reached = 0;
        std::signal(signal, &NoteSignal);
        {
            const InterruptWatch watch;
            EXPECT_FALSE(InterruptWatch::Requested()) << signal;
            pollfd waiting{InterruptWatch::Descriptor(), POLLIN, 0};
            EXPECT_EQ(poll(&waiting, 1, 0), 0) << signal;
            std::raise(signal);
            EXPECT_TRUE(InterruptWatch::Requested()) << signal;
            EXPECT_EQ(poll(&waiting, 1, 0), 1) << signal; // wakes an event loop
            EXPECT_EQ(reached, 0) << signal;
        }
        std::raise(signal);
        EXPECT_EQ(reached, 1) << signal;
        std::signal(signal, SIG_DFL);
    }
}

TEST(InterruptWatchTest, LeavesIgnoredSignalsIgnored) {
    const auto before = std::signal(SIGHUP, SIG_IGN); // as nohup does
    {
        const InterruptWatch watch;
        std::raise(SIGHUP);
        EXPECT_FALSE(InterruptWatch::Requested());
    }
    std::signal(SIGHUP, before);
}

} // namespace
} // namespace tracksmith::system
