#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <vector>

#include "base/display_text.h"
#include "base/system/file_io.h"

#include "app/cli/commands.h"
#include "app/cli/instrument_choice.h"
#include "app/cli/reading_options.h"
#include "app/cli/song_input.h"
#include "app/cli/song_target.h"
#include "app/cli/texts.h"
#include "instruments/picker/patch_state.h"
#include "instruments/picker/write_voice.h"
#include "instruments/voices/voice_list.h"
#include "instruments/voices/voice_search.h"
#include "mixer/mixer.h"

namespace tracksmith::cli {
namespace {

using instruments::Voice;
using mixer::Control;

constexpr std::size_t kMostVoicesListed = 8;

constexpr session::ChangeKind kSetVoice{.name = Text{De{"Klang"}, En{"Voice"}}};

/// The options that stand for a strip's controls.
struct ControlOption {
    Control control;
    const char* name;
};
constexpr auto kControlOptions = std::to_array<ControlOption>({{Control::Volume, "volume"},
                                                               {Control::Pan, "pan"},
                                                               {Control::Expression, "expression"},
                                                               {Control::Reverb, "reverb"},
                                                               {Control::Chorus, "chorus"},
                                                               {Control::Harmonic, "harmonic"},
                                                               {Control::Release, "release"},
                                                               {Control::Attack, "attack"},
                                                               {Control::Brightness, "brightness"},
                                                               {Control::Variation, "variation"}});

struct SetArguments {
    std::string file;
    SongTarget target;
    std::string instrument;
    std::string voice;
    int channel = 1;
    std::array<std::optional<int>, mixer::kControls> values;
    std::optional<int> transpose;
    bool insert = false;
    ReadingOptions reading;

    std::size_t Channel() const { return static_cast<std::size_t>(channel - 1); }
    bool SetsNothing() const {
        return voice.empty() && !transpose &&
               std::ranges::none_of(values, [](const auto& value) { return value.has_value(); });
    }
};

/// One run of `set`.
class Setting {
public:
    Setting(CliContext& context, const SetArguments& arguments)
        : context_(context), arguments_(arguments), batch_(context) {}

    int Run() {
        const std::vector<InputFile>& inputs = batch_.Expand({arguments_.file});
        if (const int fault = CheckArguments(inputs); fault != kOk) {
            return fault;
        }
        batch_.SetUp([this](session::WorkOptions& options) {
            arguments_.reading.SetUp(options);
            if (instrument_ != nullptr) {
                options.outputs.outputs.front().SetName(instrument_->name);
            }
        });
        return batch_.Run([this](SongJob& job) { return Set(job); });
    }

private:
    int Complain(const Text& text) const {
        context_.log << context_.Say(text) << "\n";
        return kUsage;
    }

    int CheckArguments(const std::vector<InputFile>& inputs) {
        if (const int fault = arguments_.target.Check(context_, inputs); fault != kOk) {
            return fault;
        }
        if (arguments_.SetsNothing()) {
            return Complain(texts::kNothingToSet);
        }
        if (!arguments_.instrument.empty()) {
            instrument_ = ChooseInstrument(context_, arguments_.instrument);
            return instrument_ == nullptr ? kUsage : kOk;
        }
        return kOk;
    }

    int Set(SongJob& job) const {
        mixer::Mixer mixer(job.session);
        if (!mixer.Used(arguments_.Channel())) {
            job.host.ShowMessage(texts::NoSuchChannel(context_.language, arguments_.channel));
            return kFindings;
        }
        if (const auto missing = MissingEvents(job.session, mixer); !missing.empty()) {
            job.host.ShowMessage(texts::NoEventToSet(context_.language, missing));
            return kFindings;
        }
        if (!arguments_.voice.empty()) {
            const int code = SetVoice(job, mixer.PlaysDrums(arguments_.Channel()));
            if (code != kOk) {
                return code;
            }
        }
        SetControls(job, mixer);
        return Store(job);
    }

    /// The options for which the song has no event that could be changed.
    std::vector<std::string> MissingEvents(const session::Session& session,
                                           const mixer::Mixer& mixer) const {
        std::vector<std::string> missing;
        const std::size_t channel = arguments_.Channel();
        for (const auto& [control, name] : kControlOptions) {
            if (ValueOf(control) && mixer.State(channel, control).Hollow()) {
                missing.push_back(std::string("--") + name);
            }
        }
        if (!arguments_.voice.empty() &&
            instruments::SongPatches(session.Song()).Changes(channel).empty()) {
            missing.emplace_back("--voice");
        }
        return arguments_.insert ? std::vector<std::string>() : missing;
    }

    void SetControls(SongJob& job, mixer::Mixer& mixer) const {
        const std::size_t channel = arguments_.Channel();
        for (const auto& each : kControlOptions) {
            if (const auto value = ValueOf(each.control)) {
                mixer.Move(channel, each.control, *value);
                if (mixer.State(channel, each.control).Hollow()) {
                    mixer.InsertAtStart(channel, each.control, job.host);
                }
            }
        }
        if (arguments_.transpose) {
            // Without a player nothing can be in the way.
            static_cast<void>(mixer.TransposeChannel(channel, *arguments_.transpose));
        }
    }

    std::optional<int> ValueOf(Control control) const {
        return arguments_.values[mixer::IndexOf(control)];
    }

    int SetVoice(SongJob& job, bool drums) const {
        const instruments::InstrumentId id =
            instrument_ != nullptr ? instrument_->id : instruments::kGmSoundset;
        const auto matches = MatchVoices(id, drums);
        if (matches.size() != 1) {
            std::vector<std::string> names;
            names.reserve(matches.size());
            for (const Voice* voice : matches) {
                names.emplace_back(voice->name);
            }
            names.resize(std::min(names.size(), kMostVoicesListed));
            job.host.ShowMessage(texts::NotOneVoice(context_.language, arguments_.voice, names));
            return kUsage;
        }
        job.session.Change(kSetVoice, job.host, [&](session::Workspace& work) {
            const std::size_t first = 0;
            instruments::WriteVoice(work.song, arguments_.Channel(), std::span(&first, 1),
                                    matches.front()->Numbers());
            return true;
        });
        return kOk;
    }

    // Those of exactly this name, else those whose names or numbers fit.
    std::vector<const Voice*> MatchVoices(instruments::InstrumentId id, bool kits) const {
        const std::string name = instruments::FoldedText(arguments_.voice);
        const instruments::VoiceSearch search(arguments_.voice);
        std::vector<const Voice*> exact;
        std::vector<const Voice*> fitting;
        for (const Voice* voice : instruments::VoicesOf(*context_.voices, id).voices) {
            if (voice->IsKit() == kits && search.Match(*voice) == instruments::VoiceHit::Name) {
                fitting.push_back(voice);
            }
            if (voice->IsKit() == kits && instruments::FoldedText(voice->name) == name) {
                exact.push_back(voice);
            }
        }
        // Own voices come before inherited ones of the same name.
        exact.resize(std::min<std::size_t>(exact.size(), 1));
        return exact.empty() ? fitting : exact;
    }

    int Store(SongJob& job) const {
        const auto target = arguments_.target.PathFor(job.input);
        if (const int code = arguments_.target.Store(job); code != kOk) {
            return code;
        }
        job.context.out << job.input.Name() << " -> " << DisplayPath(system::PathText(target))
                        << "\n";
        return kOk;
    }

    CliContext& context_;
    const SetArguments& arguments_;
    SongBatch batch_;
    const instruments::Instrument* instrument_ = nullptr;
};

void AddControls(Command& command, SetArguments& arguments, const CliContext& context) {
    for (const auto& [control, name] : kControlOptions) {
        command
            .Option(
                std::string("--") + name, arguments.values[mixer::IndexOf(control)],
                context.Say(texts::kHelpController) + std::to_string(mixer::ControllerOf(control)))
            .Value("0-127")
            .Between(0, 127);
    }
}

} // namespace

void AddSetCommand(Command& app, CliContext& context) {
    const auto arguments = std::make_shared<SetArguments>();
    Command command = app.Add("set", context.Say(texts::kHelpSet));
    command.Option("FILE", arguments->file, context.Say(texts::kHelpFile)).Required().Value("");
    command.Option("-c,--channel", arguments->channel, context.Say(texts::kHelpSetChannel))
        .Value("1-16")
        .Required()
        .Between(1, 16);
    command.Option("--voice", arguments->voice, context.Say(texts::kHelpSetVoice)).Value("NAME");
    AddControls(command, *arguments, context);
    command.Option("--transpose", arguments->transpose, context.Say(texts::kHelpSetTranspose))
        .Value("N")
        .Between(-mixer::kMostSemitones, mixer::kMostSemitones);
    command.Option("--instrument", arguments->instrument, context.Say(texts::kHelpVoicesInstrument))
        .Value("NAME");
    command.Flag("--insert", arguments->insert, context.Say(texts::kHelpSetInsert));
    arguments->target.AddTo(command, context);
    arguments->reading.AddTo(command, context);
    command.Runs([&context, arguments] { return Setting(context, *arguments).Run(); });
}

} // namespace tracksmith::cli
