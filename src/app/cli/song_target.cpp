#include "app/cli/song_target.h"

#include <ostream>

#include "base/display_text.h"

#include "app/cli/texts.h"
#include "app/output_names.h"
#include "app/save_song.h"

namespace tracksmith::cli {

void SongTarget::AddTo(Command& command, const CliContext& context) {
    command.Option("-o,--out", out, context.Say(texts::kHelpOutFile)).Value("FILE");
    command.Flag("--in-place", inPlace, context.Say(texts::kHelpInPlace));
    command.Flag("-n,--dry-run", dryRun, context.Say(texts::kHelpDryRun));
}

int SongTarget::Check(const CliContext& context, const std::vector<InputFile>& inputs) const {
    const auto complain = [&context](const Text& text) {
        context.log << context.Say(text) << "\n";
        return kUsage;
    };
    if (inputs.size() > 1) {
        return complain(texts::kOneSong);
    }
    if (inPlace == !out.empty()) {
        return complain(inPlace ? texts::kOutAndInPlace : texts::kNoOutputFile);
    }
    if (!inPlace && app::OutputNames({}, PathsOf(inputs)).IsInput(PathOf(out))) {
        context.log << context.Say(texts::kWouldOverwriteInput) << DisplayPath(out) << "\n";
        return kWriteFailed;
    }
    return kOk;
}

std::filesystem::path SongTarget::PathFor(const InputFile& input) const {
    return inPlace ? input.path : PathOf(out);
}

int SongTarget::Store(SongJob& job) const {
    const auto target = PathFor(job.input);
    const auto bytes = app::EncodeSong(job.session, app::SaveFormat::AsSong, job.host);
    if (dryRun) {
        return kOk;
    }
    if (!inPlace && !app::ConfirmOverwrite(target, job.host)) {
        return kWriteFailed;
    }
    app::WriteMidiFile(target, bytes, job.host);
    return kOk;
}

} // namespace tracksmith::cli
