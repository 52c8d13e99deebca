#include "support/session_walk.h"

#include "app/session/session_fixture.h"
#include "editing/random_music.h"

namespace tracksmith::editing {
namespace {

using namespace test;

using RandomSessionTest = SessionFixture;

TEST_F(RandomSessionTest, CommandsInAnyOrderDoWhatTheySay) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        Dice dice(seed);
        SessionWalk walk(
            session, host, [&](int sides) { return dice.Roll(sides); },
            [](const std::string& fault) { ADD_FAILURE() << fault; });
        Open(RandomMusic(dice));
        for (int step = 0; step < 14 && !HasFailure(); ++step) {
            walk.Step();
        }
    }
}

} // namespace
} // namespace tracksmith::editing
