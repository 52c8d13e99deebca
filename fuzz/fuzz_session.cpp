#include "fuzz_song.h"
#include "support/session_walk.h"

// Any file, and commands in any order on its song. The first byte is the number of commands, which
// are chosen by as many groups of bytes behind it; the rest is the file.

using namespace tracksmith;
using namespace tracksmith::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kBytesOfCommand = 10;
    constexpr std::size_t kMostCommands = 12;
    const std::size_t commands = size == 0 ? 0 : data[0] % kMostCommands;
    const std::size_t behind = 1 + commands * kBytesOfCommand;
    if (commands == 0 || size <= behind) {
        return 0;
    }
    session::Session session;
    RecordingMessageHost host;
    std::size_t place = 0;
    test::SessionWalk walk(
        session, host, [&](int sides) { return place < behind ? data[place++] % sides : 0; },
        [](const std::string& fault) { Require(false, fault); });
    try {
        app::OpenMidiData(session, std::vector<std::uint8_t>(data + behind, data + size),
                          "walk.mid", host);
        for (std::size_t command = 0; command < commands; ++command) {
            place = 1 + command * kBytesOfCommand;
            walk.Step();
        }
    } catch (const EMidiError&) {
        Require(!host.messages.empty(), "an error was not shown");
    }
    return 0;
}
