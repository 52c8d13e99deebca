#include "instruments/sysex/describe_sysex.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "instruments/sysex/manufacturers.h"
#include "instruments/sysex/sysex_meanings.h"
#include "instruments/sysex/sysex_patterns.h"
#include "instruments/sysex/texts.h"

namespace tracksmith::instruments {
namespace {

constexpr std::uint8_t kEnd = 0xF7;
constexpr std::uint8_t kUsualRolandDevice = 0x10;
constexpr std::size_t kMostValues = 8;

// Builds both wordings at once.
class Words {
public:
    Words& Add(const Text& text) {
        words_.german += text.german;
        words_.english += text.english;
        return *this;
    }
    Words& Add(std::string_view text) {
        words_.german += text;
        words_.english += text;
        return *this;
    }
    Words& Hex(std::uint8_t byte) {
        constexpr std::string_view kDigits = "0123456789ABCDEF";
        const std::array<char, 2> digits{kDigits[byte >> 4U], kDigits[byte & 15U]};
        return Add(std::string_view(digits.data(), digits.size()));
    }
    Words& Hex(SysexBytes bytes) {
        for (std::size_t i = 0; i < std::min(bytes.size(), kMostValues); ++i) {
            Add(i == 0 ? "" : " ").Hex(bytes[i]);
        }
        return bytes.size() > kMostValues ? Add(" …") : *this;
    }
    Words& Number(std::size_t number) { return Add(std::to_string(number)); }
    SysexDescription Take() { return std::move(words_); }

private:
    SysexDescription words_;
};

void AddTarget(Words& words, AddressTarget target, const ParameterMessage& message) {
    switch (target) {
        case AddressTarget::GsPart:
            words.Add(", ").Add(texts::kChannel).Number(GsChannel(message.middle) + 1);
            break;
        case AddressTarget::XgPart:
            words.Add(", ").Add(texts::kPart).Number(message.middle + std::size_t{1});
            break;
        case AddressTarget::DrumKey:
            words.Add(texts::kDrumKey).Number(message.high == 0x41 ? message.low : message.middle);
            break;
        case AddressTarget::Whole:
            break;
    }
}

bool IsReset(const ParameterMessage& message, std::uint8_t high, std::uint8_t low) {
    return message.high == high && message.middle == 0 && message.low == low;
}

// "GS: reverb, value 05" or, without a meaning, the address in figures.
void AddParameter(Words& words, std::string_view family, const ParameterMessage& message,
                  const AddressMeaning* meaning) {
    words.Add(family).Add(": ");
    if (meaning != nullptr) {
        words.Add(meaning->words);
        AddTarget(words, meaning->target, message);
    } else {
        words.Add(texts::kAddress).Hex(message.high).Add(" ").Hex(message.middle).Add(" ");
        words.Hex(message.low);
    }
    words.Add(texts::kValue).Hex(message.values);
}

void AddGs(Words& words, const ParameterMessage& message) {
    if (IsReset(message, 0x40, 0x7F)) {
        words.Add("GS Reset");
    } else {
        AddParameter(words, "GS", message, GsMeaning(message));
    }
    if (message.device != kUsualRolandDevice || IsReset(message, 0x40, 0x7F)) {
        words.Add(texts::kDevice).Hex(message.device);
    }
    if (!message.checksumRight) {
        words.Add(texts::kWrongChecksum);
    }
}

void AddXg(Words& words, const ParameterMessage& message) {
    if (IsReset(message, 0x00, 0x7E)) {
        words.Add("XG System On");
    } else {
        AddParameter(words, "Yamaha XG", message, XgMeaning(message));
    }
}

// Model numbers of Roland and Korg stand behind the device number; leading zeros belong to them.
void AddModel(Words& words, SysexBytes data) {
    const SysexBytes behind = data.subspan(std::min<std::size_t>(2, data.size()));
    const auto* end = std::find_if(behind.data(), behind.data() + behind.size(),
                                   [](std::uint8_t byte) { return byte != 0; });
    const auto zeros = static_cast<std::size_t>(end - behind.data());
    const SysexBytes model = behind.first(std::min({zeros + 1, behind.size(), std::size_t{4}}));
    if (!model.empty()) {
        words.Add(texts::kModel).Hex(model);
    }
}

void AddMaker(Words& words, SysexBytes data) {
    constexpr std::uint8_t kNonCommercial = 0x7D;
    const std::string_view maker = ManufacturerOf(data);
    if (!maker.empty()) {
        words.Add(maker);
    } else if (data[0] == kNonCommercial) {
        words.Add(texts::kReservedId);
    } else {
        const std::size_t idBytes = data[0] == 0 ? 3 : 1;
        words.Add(texts::kUnknownMaker).Hex(data.first(std::min(idBytes, data.size())));
    }
}

void AddYamaha(Words& words, SysexBytes data) {
    const int kind = ByteAt(data, 1);
    if (ByteAt(data, 2) == 0x4C && kind < 0x40) {
        words.Add("Yamaha XG: ").Add(kind < 0x10 ? texts::kBulkDump : texts::kRequest);
    } else if (IsOrganFlute(data)) {
        words.Add("Yamaha: Organ Flutes");
    } else if (IsVocalHarmony(data)) {
        words.Add("Yamaha: Vocal Harmony");
    } else {
        words.Add("Yamaha").Add(texts::kModel);
        words.Hex(data.subspan(std::min<std::size_t>(kind < 0x40 ? 2 : 1, data.size()))
                      .first(data.size() > 2 ? 1 : 0));
    }
}

void AddOther(Words& words, SysexBytes data) {
    if (data[0] == kYamahaId && data.size() > 3) {
        AddYamaha(words, data);
    } else {
        AddMaker(words, data);
        const std::string_view model = data[0] == kRolandId ? RolandModel(data) : "";
        if (!model.empty()) {
            words.Add(" ").Add(model);
        } else if (data[0] == kRolandId || data[0] == kKorgId) {
            AddModel(words, data);
        }
    }
    words.Add(", ").Number(data.size() + 1).Add(texts::kBytes);
}

void AddMeaning(Words& words, SysexBytes data) {
    if (const Text* universal = UniversalMeaning(data)) {
        words.Add(*universal);
    } else if (const Text* setUp = SetUpMeaning(data)) {
        words.Add(*setUp);
    } else if (data[0] == kUniversalNonRealTime || data[0] == kUniversalRealTime) {
        words.Add(texts::kUniversal)
            .Add(" ")
            .Hex(data.first(std::min<std::size_t>(4, data.size())));
    } else if (const auto gs = GsMessage(data)) {
        AddGs(words, *gs);
    } else if (const auto xg = XgMessage(data)) {
        AddXg(words, *xg);
    } else {
        AddOther(words, data);
    }
}

} // namespace

SysexDescription DescribeSysex(SysexBytes message) {
    Words words;
    const SysexBytes data = message.empty() ? message : DataOf(message);
    if (data.empty() || data[0] == kEnd) {
        return words.Add(texts::kEmpty).Take();
    }
    AddMeaning(words, data);
    if (data.back() != kEnd) {
        words.Add(texts::kNotClosed);
    }
    return words.Take();
}

} // namespace tracksmith::instruments
