#include "instruments/importers/midnam_device.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "instruments/importers/import_text.h"
#include "instruments/importers/texts.h"
#include "instruments/voices/voice_file_error.h"

namespace tracksmith::instruments {
namespace {

constexpr unsigned kLargestNumber = 127;
constexpr unsigned kBankMsb = 0;
constexpr unsigned kBankLsb = 32;
constexpr std::uint16_t kAllChannels = 0xFFFF;
constexpr std::uint16_t kDrumChannel = 1U << 9U;
// The DTD has lists refer to none; files that do so are followed as far as this.
constexpr int kMostDepth = 16;

/// The bank numbers that a bank or a patch selects, as far as it does.
struct Bank {
    std::optional<std::uint8_t> msb;
    std::optional<std::uint8_t> lsb;
};

/// Where a patch belongs, and the bank that it is in unless it says otherwise.
struct Place {
    std::string family;
    std::string category;
    Bank bank;
};

std::string_view Attribute(pugi::xml_node node, const char* name) {
    return node.attribute(name).value();
}

std::string NameAttribute(pugi::xml_node node) {
    return ImportedName(Attribute(node, "Name"), TextEncoding::Utf8);
}

bool Is(pugi::xml_node node, std::string_view name) {
    return node.name() == name;
}

// The next node of the tree below `top` in the order of the file; an empty one behind the last.
pugi::xml_node NextNode(pugi::xml_node node, pugi::xml_node top, bool withChildren) {
    if (withChildren && node.first_child()) {
        return node.first_child();
    }
    while (node != top && !node.next_sibling()) {
        node = node.parent();
    }
    return node == top ? pugi::xml_node() : node.next_sibling();
}

std::uint16_t ChannelBit(pugi::xml_node node) {
    const auto channel = ImportedNumber(Attribute(node, "Channel"), 16);
    return channel.value_or(0) == 0 ? std::uint16_t{0}
                                    : static_cast<std::uint16_t>(1U << (*channel - 1));
}

std::uint16_t AvailableChannels(pugi::xml_node nameSet) {
    const pugi::xml_node available = nameSet.child("AvailableForChannels");
    if (!available) {
        return kAllChannels;
    }
    std::uint16_t channels = 0;
    for (const pugi::xml_node channel : available.children("AvailableChannel")) {
        if (Attribute(channel, "Available") != "false") {
            channels |= ChannelBit(channel);
        }
    }
    return channels;
}

bool NamesKeys(pugi::xml_node patch) {
    return patch.child("UsesNoteNameList") || patch.child("NoteNameList");
}

/// What a patch says of itself, or a reference to another list.
struct Entry {
    pugi::xml_node node;
    /// The patch's bank where it has one of its own.
    Bank bank;
    std::optional<std::uint8_t> program;
    std::string name;
    bool isKit = false;
    /// A reference: the name of a list.
    bool isReference = false;
};

/// Gathers one device. The document stays as it is and outlives it. Each node is read once; what a
/// list holds is then copied for every reference to it, which the collector counts.
class DeviceReader {
public:
    DeviceReader(pugi::xml_node device, std::string_view text, RowCollector& rows)
        : device_(device), text_(text), rows_(rows) {}

    void Read() {
        FindParts();
        std::size_t melodic = 0;
        for (const pugi::xml_node nameSet : nameSets_) {
            melodic += IsDrumSet(nameSet) ? 0U : 1U;
        }
        for (const pugi::xml_node nameSet : nameSets_) {
            ReadNameSet(nameSet, melodic > 1);
        }
        rows_.Finish(Models());
    }

private:
    using List = std::vector<Entry>;

    // The line is only counted for an error: to count it for every node would take too long.
    [[noreturn]] void Fail(const Text& reason, pugi::xml_node node) const {
        const std::ptrdiff_t offset = node.offset_debug();
        throw VoiceFileError(reason,
                             offset < 0 ? 0 : LineAt(text_, static_cast<std::size_t>(offset)));
    }

    void CountVisit(pugi::xml_node node) {
        if (!rows_.CountVisit()) {
            Fail(texts::kImportTooManyReferences, node);
        }
    }

    void FindParts() {
        for (pugi::xml_node node = device_; node;
             node = NextNode(node, device_, !Is(node, "Patch"))) {
            if (Is(node, "ChannelNameSet")) {
                nameSets_.push_back(node);
            } else if (Is(node, "PatchNameList")) {
                if (NamedList& list = lists_[Attribute(node, "Name")]; !list.node) {
                    list.node = node;
                }
            } else if (Is(node, "ChannelNameSetAssign")) {
                assigned_[Attribute(node, "NameSet")] |= ChannelBit(node);
            }
        }
    }

    bool IsDrumSet(pugi::xml_node nameSet) const {
        std::uint16_t channels = AvailableChannels(nameSet);
        const auto assigned = assigned_.find(Attribute(nameSet, "Name"));
        if (assigned != assigned_.end()) {
            channels &= assigned->second;
        }
        return channels == kDrumChannel;
    }

    void ReadNameSet(pugi::xml_node nameSet, bool oneOfSeveral) {
        const std::string name = NameAttribute(nameSet);
        Place place;
        place.family = IsDrumSet(nameSet)              ? kDrumsFamily
                       : oneOfSeveral && !name.empty() ? std::string_view(name)
                                                       : texts::kImportedFamily;
        for (const pugi::xml_node bank : nameSet.children("PatchBank")) {
            const std::string category = NameAttribute(bank);
            place.category = !category.empty() ? category : !name.empty() ? name : place.family;
            place.bank = BankOf(bank.child("MIDICommands"));
            AddList(ReadList(bank), place, 0);
        }
    }

    std::uint8_t NumberOf(pugi::xml_node node, const char* attribute) const {
        const auto number = ImportedNumber(Attribute(node, attribute), kLargestNumber);
        if (!number) {
            Fail(texts::kMidnamNumber, node);
        }
        return static_cast<std::uint8_t>(*number);
    }

    Bank BankOf(pugi::xml_node commands) const {
        Bank bank;
        for (const pugi::xml_node change : commands.children("ControlChange")) {
            const std::uint8_t control = NumberOf(change, "Control");
            if (control == kBankMsb) {
                bank.msb = NumberOf(change, "Value");
            } else if (control == kBankLsb) {
                bank.lsb = NumberOf(change, "Value");
            }
        }
        return bank;
    }

    std::optional<std::uint8_t> ProgramOf(pugi::xml_node patch, pugi::xml_node commands) const {
        if (patch.attribute("ProgramChange")) {
            return NumberOf(patch, "ProgramChange");
        }
        if (const pugi::xml_node change = commands.child("ProgramChange")) {
            return NumberOf(change, "Number");
        }
        return std::nullopt;
    }

    Entry ReadPatch(pugi::xml_node patch) const {
        pugi::xml_node commands = patch.child("PatchMIDICommands");
        if (!commands) {
            commands = patch.child("MIDICommands");
        }
        return {.node = patch,
                .bank = BankOf(commands),
                .program = ProgramOf(patch, commands),
                .name = NameAttribute(patch),
                .isKit = NamesKeys(patch)};
    }

    // The patches of a bank or a list, and the lists that it refers to.
    List ReadList(pugi::xml_node list) const {
        List entries;
        for (pugi::xml_node node = list.first_child(); node;
             node = NextNode(node, list, Is(node, "PatchNameList"))) {
            if (Is(node, "Patch")) {
                entries.push_back(ReadPatch(node));
            } else if (Is(node, "UsesPatchNameList")) {
                Entry& reference = entries.emplace_back();
                reference.node = node;
                reference.isReference = true;
            }
        }
        return entries;
    }

    const List* FindList(std::string_view name) {
        const auto found = lists_.find(name);
        if (found == lists_.end()) {
            return nullptr;
        }
        NamedList& list = found->second;
        if (!list.isRead) {
            list.entries = ReadList(list.node);
            list.isRead = true;
        }
        return &list.entries;
    }

    void AddList(const List& entries, const Place& place, int depth) {
        for (const Entry& entry : entries) {
            CountVisit(entry.node);
            if (!entry.isReference) {
                AddPatch(entry, place);
            } else if (depth == kMostDepth) {
                Fail(texts::kReferenceDepth, entry.node);
            } else if (const List* list = FindList(Attribute(entry.node, "Name"))) {
                AddList(*list, place, depth + 1);
            } else {
                rows_.LeaveOut();
            }
        }
    }

    void AddPatch(const Entry& patch, const Place& place) {
        if (!patch.program) {
            rows_.LeaveOut();
            return;
        }
        const auto choose = [](const auto& own, const auto& ofBank) {
            return own ? *own : ofBank.value_or(std::uint8_t{0});
        };
        VoiceRow row;
        row.family = patch.isKit ? kDrumsFamily : std::string_view(place.family);
        row.category = place.category;
        row.numbers.msb = choose(patch.bank.msb, place.bank.msb);
        row.numbers.lsb = choose(patch.bank.lsb, place.bank.lsb);
        row.numbers.program = *patch.program;
        row.name = patch.name;
        if (!rows_.Add(std::move(row))) {
            Fail(texts::kImportTooMany, patch.node);
        }
    }

    /// A list that banks refer to, read when one does.
    struct NamedList {
        pugi::xml_node node;
        List entries;
        bool isRead = false;
    };

    std::vector<std::string> Models() const {
        std::vector<std::string> models;
        const std::string maker =
            ImportedName(device_.child_value("Manufacturer"), TextEncoding::Utf8);
        for (const pugi::xml_node node : device_.children("Model")) {
            const std::string model = ImportedName(node.child_value(), TextEncoding::Utf8);
            const bool hasMaker = maker.empty() || model.starts_with(maker);
            models.push_back(hasMaker ? model : std::string(maker).append(1, ' ').append(model));
        }
        if (models.empty()) {
            models.push_back(maker.empty() ? NameAttribute(device_) : maker);
        }
        return models;
    }

    pugi::xml_node device_;
    std::string_view text_;
    RowCollector& rows_;
    std::vector<pugi::xml_node> nameSets_;
    std::map<std::string_view, NamedList> lists_;
    // Channels that the device's modes give to a name set.
    std::map<std::string_view, std::uint16_t> assigned_;
};

} // namespace

void CollectMidnamDevice(pugi::xml_node device, std::string_view text, RowCollector& rows) {
    constexpr std::array kDevices{"MasterDeviceNames", "ExtendingDeviceNames",
                                  "StandardDeviceMode"};
    for (const char* name : kDevices) {
        if (Is(device, name)) {
            DeviceReader(device, text, rows).Read();
        }
    }
}

} // namespace tracksmith::instruments
