#include "app/diff/difference_json.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace tracksmith::diff {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kSchema = 1;

Json RowJson(const Difference& row, const song::TimeMap& before, const song::TimeMap& after,
             const Wording& wording) {
    const DifferenceWords words = WordsOf(row, before, after, wording);
    Json json{{"channel", row.channel == kWholeSong ? Json() : Json(row.channel + 1)},
              {"kind", KindName(row.kind)},
              {"change", ChangeName(row.change)},
              {"control", row.control},
              {"count", row.count},
              {"tick", row.tickAfter},
              {"tickBefore", row.tickBefore},
              {"position", words.position},
              {"before", row.before},
              {"after", row.after},
              {"textBefore", words.before},
              {"textAfter", words.after},
              {"ticks", row.ticks}};
    if (row.change >= Change::Cut) {
        json["length"] = row.length;
        json["source"] = row.change == Change::Copied ? Json(row.source) : Json();
    }
    if (wording.doneBy) {
        json["doneBy"] = words.doneBy;
    }
    return json;
}

} // namespace

std::string DifferencesJson(const Differences& differences, const song::TimeMap& before,
                            const song::TimeMap& after, const std::string& fileBefore,
                            const std::string& fileAfter, const Wording& wording) {
    Json counts = Json::object();
    for (std::size_t kind = 0; kind < kKinds; ++kind) {
        counts[std::string(KindName(static_cast<Kind>(kind)))] = differences.counts.at(kind);
    }
    Json rows = Json::array();
    for (const Difference& row : differences.rows) {
        rows.push_back(RowJson(row, before, after, wording));
    }
    const Json json{{"schema", kSchema},           {"before", fileBefore},
                    {"after", fileAfter},          {"same", differences.Same()},
                    {"counts", std::move(counts)}, {"rows", std::move(rows)}};
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace tracksmith::diff
