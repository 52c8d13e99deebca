#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "instruments/catalogue.h"
#include "instruments/identity/identity_messages.h"

namespace tracksmith::instruments {

/// Who has answered, as far as it is known.
struct InstrumentAnswer {
    /// What it sent; empty fields when it told nothing but its XG model name.
    IdentityReply reply;
    std::string xgModel;
    /// The maker's or brand's name; empty for a maker that no list has.
    std::string maker;
    /// Empty when the model is not known; several that answer alike are joined by "/".
    std::string model;
    /// The instrument of the catalogue that it is, or the sound set that it follows; null without
    /// either.
    const Instrument* instrument = nullptr;

    /// It is not in the catalogue itself: `instrument` is only the set that it follows.
    bool FollowsSetOnly() const;
};

/// The makers and models that the program knows by their answers. Immutable once it is made.
class IdentityTable {
public:
    /// Knows nobody.
    IdentityTable() = default;
    /// From the bytes of the two files of data/identity. What is damaged is left out; see
    /// IsComplete.
    IdentityTable(std::string_view makers, std::string_view models);
    /// From the program's own data.
    static IdentityTable Load();

    /// False when a file was missing or had a line that could not be read.
    bool IsComplete() const { return complete_; }

    /// Names the device that sent `reply`.
    InstrumentAnswer Name(const IdentityReply& reply) const;
    /// Adds the XG model name that the device has sent (too): it names the model where the codes do
    /// not, and finds the instrument, at least the XG set.
    static void AddXgModel(InstrumentAnswer& answer, const std::string& model);

private:
    struct Model {
        std::string subModel;
        std::string brand;
        std::string name;
        const Instrument* instrument = nullptr;
    };

    void AddMakers(std::string_view text);
    void AddModels(std::string_view text);
    std::vector<const Model*> ModelsOf(const IdentityReply& reply) const;

    bool complete_ = false;
    std::map<std::string, std::string, std::less<>> makers_;
    // By maker, family and member, "43 00 44 42 1C".
    std::multimap<std::string, Model, std::less<>> models_;
};

} // namespace tracksmith::instruments
