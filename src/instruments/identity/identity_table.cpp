#include "instruments/identity/identity_table.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <optional>
#include <utility>

#include "base/data_folders.h"
#include "base/system/file_io.h"
#include "base/tab_lines.h"

namespace tracksmith::instruments {
namespace {

constexpr std::string_view kMakersHeader = "maker\tname";
constexpr std::string_view kModelsHeader =
    "maker\tbrand\tfamily\tmember\tsubmodel\tmodel\tinstrument\tsource";
constexpr std::size_t kMakerColumns = 2;
constexpr std::size_t kModelColumns = 8;

std::string BytesOfData(const char* name) {
    const auto path = FindData(std::filesystem::path("identity") / name);
    const auto bytes = path ? system::ReadRegularFile(*path) : std::nullopt;
    return bytes ? std::string(bytes->begin(), bytes->end()) : std::string();
}

// What models are compared by: "PSR-SX900" is "psrsx900".
std::string Plain(std::string_view text) {
    std::string plain;
    for (const char c : text) {
        if (c >= 'A' && c <= 'Z') {
            plain.push_back(static_cast<char>(c - 'A' + 'a'));
        } else if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) {
            plain.push_back(c);
        }
    }
    return plain;
}

const Instrument* YamahaOfModel(std::string_view model) {
    const std::string plain = Plain(model);
    const auto instruments = Catalogue();
    const auto found = std::ranges::find_if(instruments, [&](const Instrument& instrument) {
        const std::string_view maker = MakerOf(instrument);
        return maker == "Yamaha" && Plain(instrument.name.substr(maker.size())) == plain;
    });
    return found == instruments.end() ? nullptr : &*found;
}

} // namespace

bool InstrumentAnswer::FollowsSetOnly() const {
    return instrument != nullptr &&
           (instrument->id == kXgSoundset || instrument->id == kGm2Soundset ||
            instrument->id == kGmSoundset);
}

IdentityTable::IdentityTable(std::string_view makers, std::string_view models) : complete_(true) {
    AddMakers(makers);
    AddModels(models);
}

IdentityTable IdentityTable::Load() {
    return {BytesOfData("makers.tsv"), BytesOfData("models.tsv")};
}

void IdentityTable::AddMakers(std::string_view text) {
    complete_ = complete_ && TakeLine(text) == kMakersHeader;
    while (!text.empty()) {
        const auto fields = SplitColumns<kMakerColumns>(TakeLine(text));
        if (fields) {
            makers_.try_emplace(std::string((*fields)[0]), (*fields)[1]);
        }
        complete_ = complete_ && fields;
    }
}

void IdentityTable::AddModels(std::string_view text) {
    complete_ = complete_ && TakeLine(text) == kModelsHeader;
    while (!text.empty()) {
        const auto fields = SplitColumns<kModelColumns>(TakeLine(text));
        complete_ = complete_ && fields;
        if (!fields) {
            continue;
        }
        const auto& [maker, brand, family, member, subModel, model, instrument, source] = *fields;
        const Instrument* entry = FindInstrument(instrument);
        complete_ = complete_ && (entry != nullptr || instrument.empty());
        std::string key(maker);
        key.append(" ").append(family).append(" ").append(member);
        models_.emplace(std::move(key), Model{std::string(subModel), std::string(brand),
                                              std::string(model), entry});
    }
}

// Where some of the models have the very sub-model of the answer, only these.
std::vector<const IdentityTable::Model*> IdentityTable::ModelsOf(const IdentityReply& reply) const {
    std::vector<const Model*> all;
    const auto [first, last] =
        models_.equal_range(reply.maker + ' ' + reply.family + ' ' + reply.member);
    std::transform(first, last, std::back_inserter(all),
                   [](const auto& each) { return &each.second; });
    std::vector<const Model*> same;
    std::ranges::copy_if(all, std::back_inserter(same), [&](const Model* model) {
        return !model->subModel.empty() && reply.version.starts_with(model->subModel);
    });
    return same.empty() ? all : same;
}

InstrumentAnswer IdentityTable::Name(const IdentityReply& reply) const {
    InstrumentAnswer answer;
    answer.reply = reply;
    if (const auto maker = makers_.find(reply.maker); maker != makers_.end()) {
        answer.maker = maker->second;
    }
    const std::vector<const Model*> models = ModelsOf(reply);
    for (const Model* model : models) {
        answer.model += (answer.model.empty() ? "" : "/") + model->name;
    }
    if (!models.empty()) {
        answer.maker = models.front()->brand;
        const Instrument* instrument = models.front()->instrument;
        const bool all = std::ranges::all_of(
            models, [&](const Model* model) { return model->instrument == instrument; });
        answer.instrument = all ? instrument : nullptr;
    }
    return answer;
}

void IdentityTable::AddXgModel(InstrumentAnswer& answer, const std::string& model) {
    answer.xgModel = model;
    answer.maker = answer.maker.empty() ? "Yamaha" : answer.maker;
    if (answer.model.empty()) {
        answer.model = model;
        const Instrument* known = YamahaOfModel(model);
        answer.instrument = known != nullptr ? known : FindInstrument(kXgSoundset);
    }
}

} // namespace tracksmith::instruments
