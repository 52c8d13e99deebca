#include "app/cli/play_session.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <ostream>
#include <thread>

#include "base/system/interrupt.h"
#include "base/system/message_poster.h"

#include "app/cli/port_choice.h"
#include "app/cli/terminal_line.h"
#include "app/cli/texts.h"
#include "app/session/session.h"
#include "song/song_position.h"

namespace tracksmith::cli {
namespace {

using Clock = std::chrono::steady_clock;

// How often the player is looked at, and how often its ports.
constexpr std::int64_t kLookMs = 30;
constexpr std::chrono::milliseconds kPortCheck{500};

/// Messages about playing, which must not run into the line that shows the position.
class PlayHost : public MessageHost {
public:
    PlayHost(MessageHost& host, TerminalLine& line) : host_(host), line_(line) {}

    Language CurrentLanguage() const override { return host_.CurrentLanguage(); }
    void ShowMessage(std::string_view text) override {
        line_.Clear();
        host_.ShowMessage(text);
    }
    bool AskYesNo(std::string_view question) override {
        line_.Clear();
        return host_.AskYesNo(question);
    }

private:
    MessageHost& host_;
    TerminalLine& line_;
};

/// Where the music is: "012.03.005  1:23/3:45  124 BPM".
std::string PositionText(const player::PlayPlace& place) {
    const song::TimeMap& map = *place.map;
    const auto tick = static_cast<std::int32_t>(song::MsToTick(map, place.ms));
    const song::TimeZoneEntry& zone = map.timeZones[song::ZoneOfTick(map, tick)];
    const std::int64_t ms = std::min<std::int64_t>(place.ms, map.lengthMs);
    return song::SongPositionToMTC(map, tick) + "  " + song::ClockText(ms) + "/" +
           song::ClockText(map.lengthMs) + "  " + std::to_string(zone.bpm) + " BPM";
}

/// Playing a part of the song only.
constexpr session::ChangeKind kPlayPart{.name = Text{De{"Ausschnitt"}, En{"Part"}}};

/// What is not to be heard stays in the song for its times.
void MuteFrom(song::Song& song, std::int32_t tick) {
    for (song::Track& track : song.tracks) {
        for (song::EventLink event = track.last; event && event->tick >= tick;
             event = event->prev) {
            if (event->status != song::kMeta) {
                event->length = 0;
            }
        }
    }
}

class PlaySession {
public:
    PlaySession(CliContext& context, devices::MidiDevices& devices, session::Session& session,
                MessageHost& host)
        : context_(context),
          devices_(devices),
          session_(session),
          line_(context),
          host_(host, line_) {}
    PlaySession(const PlaySession&) = delete;
    PlaySession& operator=(const PlaySession&) = delete;
    // The devices that the player uses end before the session does.
    ~PlaySession() { session_.EndPlayer(); }

    int Run(const PlayPlan& plan) {
        session_.StartPlayer({devices_.Outputs(), nullptr, "", host_});
        if (Player().OutputPortCount() == 0 || !OpenOutput(plan.port)) {
            return kPortOrAudioMissing;
        }
        if (!Prepare(plan)) {
            return kUsage;
        }
        const system::InterruptWatch watch;
        if (!Player().Play()) {
            host_.ShowMessage(context_.Say(texts::kNothingToPlay));
            return kUnreadable;
        }
        Wait();
        const bool stopped = Player().Stop();
        system::DispatchMessages(); // what went wrong at the very end
        return OutputLost() || !stopped ? kPortOrAudioMissing : kOk;
    }

private:
    player::TMidiPlayer& Player() const { return session_.Controls().Player(); }

    bool OpenOutput(const std::string& wanted) {
        const std::vector<player::OutputDevice> all = Player().OutputDevices();
        const std::vector<player::OutputDevice> found =
            wanted.empty() ? DefaultOutput(all) : MatchOutputs(all, wanted);
        if (found.size() != 1) {
            std::vector<std::string> names;
            for (const player::OutputDevice& output : found.empty() ? all : found) {
                names.push_back(output.productName);
            }
            host_.ShowMessage(
                texts::NotOnePort(context_.language, false, wanted, !found.empty(), names));
            return false;
        }
        port_ = found[0].port;
        player::ChannelRoutes routes;
        for (std::size_t channel = 0; channel < player::kChannels; ++channel) {
            routes[channel] = {port_, static_cast<std::uint8_t>(channel)};
        }
        return Player().SetRoutes(routes) && TellOpening(found[0], Player().OpenPort(port_));
    }

    bool TellOpening(const player::OutputDevice& output, bool open) {
        std::string trouble;
        if (output.softwareInstrument && devices_.Synth() != nullptr) {
            trouble = devices_.Synth()->Trouble(context_.language);
        }
        if (!trouble.empty()) {
            host_.ShowMessage(trouble);
        }
        if (open && !context_.quiet) {
            context_.log << context_.Say(texts::kPlayingOn) << output.productName << std::endl;
        }
        return open;
    }

    /// Carries the plan out as far as is possible before playing.
    bool Prepare(const PlayPlan& plan) {
        const std::int32_t end = plan.toTick.value_or(session_.Song().songLength);
        if (plan.toTick && !plan.loop) {
            session_.Change(kPlayPart, host_, [&](session::Workspace& workspace) {
                MuteFrom(workspace.song, end);
                return true;
            });
        }
        if (!Place(plan, end)) {
            return false;
        }
        if (plan.loop && !Player().Loop().Active()) {
            host_.ShowMessage(context_.Say(texts::kLoopTooShort));
            return false;
        }
        return true;
    }

    /// False when a driver hangs, which has been told.
    bool Place(const PlayPlan& plan, std::int32_t end) {
        if (!Player().SetTempoOffset(plan.tempoOffset)) {
            return false;
        }
        const std::shared_ptr<const song::TimeMap> map = Player().Place().map;
        if (plan.toTick && !plan.loop) {
            endMs_ = song::TickToMs(*map, end);
        }
        return Player().MoveToTimePosition(song::TickToMs(*map, plan.fromTick)) &&
               (!plan.loop || (Player().SetLoop(plan.fromTick, end) && Player().SetLooping(true)));
    }

    void Wait() {
        Clock::time_point nextCheck = Clock::now() + kPortCheck;
        while (Player().Playing() && !OutputLost() && !system::InterruptWatch::Requested()) {
            const player::PlayPlace place = Player().Place();
            if (place.ms >= endMs_) {
                return;
            }
            line_.Show(PositionText(place));
            std::this_thread::sleep_for(
                std::chrono::milliseconds(std::min(kLookMs, endMs_ - place.ms)));
            system::DispatchMessages();
            if (Clock::now() >= nextCheck) {
                nextCheck = Clock::now() + kPortCheck;
                Player().CheckPorts();
            }
        }
    }

    /// Also when it is back meanwhile: what it has missed cannot be made up for.
    bool OutputLost() const {
        const std::vector<player::OutputDevice> outputs = Player().OutputDevices();
        return std::any_of(outputs.begin(), outputs.end(), [this](const auto& output) {
            return output.port == port_ && output.timesLost > 0;
        });
    }

    CliContext& context_;
    devices::MidiDevices& devices_;
    session::Session& session_;
    TerminalLine line_;
    PlayHost host_;
    std::size_t port_ = 0;
    std::int64_t endMs_ = std::numeric_limits<std::int64_t>::max();
};

} // namespace

int PlaySong(CliContext& context, const PlayPlan& plan, devices::MidiDevices& devices,
             session::Session& session, MessageHost& host) {
    return PlaySession(context, devices, session, host).Run(plan);
}

} // namespace tracksmith::cli
