#include "instruments/sysex/sysex_meanings.h"

#include <algorithm>
#include <array>

namespace tracksmith::instruments {
namespace {

constexpr int kAny = -1;

struct UniversalRow {
    int id; // 7E or 7F
    int kind;
    int detail;
    Text words;
};

// The first row that fits counts.
constexpr auto kUniversal = std::to_array<UniversalRow>({
    {0x7E, 0x01, kAny, Text{Both{"Sample Dump Header"}}},
    {0x7E, 0x02, kAny, Text{Both{"Sample Dump"}}},
    {0x7E, 0x03, kAny, Text{Both{"Sample Dump Request"}}},
    {0x7E, 0x04, kAny, Text{De{"MIDI-Timecode: Einstellungen"}, En{"MIDI time code set-up"}}},
    {0x7E, 0x06, 0x01, Text{De{"Geräteabfrage"}, En{"device inquiry"}}},
    {0x7E, 0x06, 0x02, Text{De{"Antwort auf Geräteabfrage"}, En{"device inquiry reply"}}},
    {0x7E, 0x07, kAny, Text{Both{"File Dump"}}},
    {0x7E, 0x08, kAny, Text{De{"Stimmung"}, En{"tuning"}}},
    {0x7E, 0x09, 0x01, Text{Both{"GM System On"}}},
    {0x7E, 0x09, 0x02, Text{Both{"GM System Off"}}},
    {0x7E, 0x09, 0x03, Text{Both{"GM2 System On"}}},
    {0x7E, 0x0A, kAny, Text{Both{"Downloadable Sounds"}}},
    {0x7E, 0x7B, kAny, Text{Both{"End of File"}}},
    {0x7E, 0x7C, kAny, Text{Both{"Wait"}}},
    {0x7E, 0x7D, kAny, Text{Both{"Cancel"}}},
    {0x7E, 0x7E, kAny, Text{Both{"NAK"}}},
    {0x7E, 0x7F, kAny, Text{Both{"ACK"}}},
    {0x7F, 0x01, kAny, Text{De{"MIDI-Timecode"}, En{"MIDI time code"}}},
    {0x7F, 0x02, kAny, Text{Both{"MIDI Show Control"}}},
    {0x7F, 0x03, kAny, Text{De{"Notationsangabe"}, En{"notation information"}}},
    {0x7F, 0x04, 0x01, Text{De{"Gesamtlautstärke"}, En{"master volume"}}},
    {0x7F, 0x04, 0x02, Text{De{"Gesamtbalance"}, En{"master balance"}}},
    {0x7F, 0x04, 0x03, Text{De{"Feinstimmung"}, En{"master fine tuning"}}},
    {0x7F, 0x04, 0x04, Text{De{"Grobstimmung"}, En{"master coarse tuning"}}},
    {0x7F, 0x04, 0x05, Text{De{"GM2-Effektparameter"}, En{"GM2 effect parameter"}}},
    {0x7F, 0x05, kAny, Text{De{"Zeitmarke"}, En{"real-time cueing"}}},
    {0x7F, 0x06, kAny,
     Text{De{"MIDI Machine Control: Befehl"}, En{"MIDI machine control command"}}},
    {0x7F, 0x07, kAny,
     Text{De{"MIDI Machine Control: Antwort"}, En{"MIDI machine control response"}}},
    {0x7F, 0x08, kAny, Text{De{"Stimmung"}, En{"tuning"}}},
    {0x7F, 0x09, kAny, Text{De{"Controller-Zuordnung"}, En{"controller destination"}}},
    {0x7F, 0x0A, kAny, Text{De{"Controller je Taste"}, En{"key-based controller"}}},
});

struct SetUpRow {
    SysexBytes beginning; // with F0
    Text words;
};

constexpr auto kSetUps = std::to_array<SetUpRow>({
    {templates::kKetron, Text{De{"Ketron: Grundeinstellung"}, En{"Ketron: set-up"}}},
    {SysexBytes(templates::kKetronSd1000).first(templates::kKetronSd1000Prefix),
     Text{De{"Ketron SD1000: Grundeinstellung"}, En{"Ketron SD1000: set-up"}}},
    {templates::kLimexPart, Text{De{"Limex: Part 1"}, En{"Limex: part 1"}}},
    {templates::kKn6000,
     Text{De{"Technics KN6000: Grundeinstellung"}, En{"Technics KN6000: set-up"}}},
    {templates::kMotifEs, Text{De{"Motif ES: Insert-Effekte"}, En{"Motif ES: insertion effects"}}},
    {templates::kMotifXf, Text{De{"Motif XF: Insert-Effekte"}, En{"Motif XF: insertion effects"}}},
    {templates::kMotifXs, Text{De{"Motif XS: Insert-Effekte"}, En{"Motif XS: insertion effects"}}},
    {SysexBytes(templates::kMotifXsOutput).first(6),
     Text{De{"Motif XS: Einstellung eines Parts"}, En{"Motif XS: setting of a part"}}},
    {templates::kSonicCellReverb, Text{De{"SonicCell: Hallpegel"}, En{"SonicCell: reverb level"}}},
    {SysexBytes(templates::kKorgPartEq).first(templates::kKorgPartEqPrefix),
     Text{De{"Korg Pa: Part-Equalizer"}, En{"Korg Pa: part equaliser"}}},
    {SysexBytes(templates::kBk9PartEq).first(templates::kBk9PartEqPrefix),
     Text{De{"BK-9: Part-Equalizer"}, En{"BK-9: part equaliser"}}},
});

// Addresses from `low` to `lowEnd`; of the middle byte only the bits of the mask count.
struct AddressRow {
    int high;
    std::uint8_t middle;
    std::uint8_t middleMask;
    std::uint8_t low;
    std::uint8_t lowEnd;
    AddressMeaning meaning;
};

constexpr std::uint8_t kAll = 0x7F;
constexpr std::uint8_t kPartOnly = 0x70; // the low nibble is the part

constexpr auto kGs = std::to_array<AddressRow>({
    {0x00, 0x00, kAll, 0x7F, 0x7F, {Text{De{"Modus setzen"}, En{"system mode set"}}}},
    {0x40, 0x00, kAll, 0x7F, 0x7F, {Text{Both{"Reset"}}}},
    {0x40, 0x00, kAll, 0x00, 0x03, {Text{De{"Gesamtstimmung"}, En{"master tune"}}}},
    {0x40, 0x00, kAll, 0x04, 0x04, {Text{De{"Gesamtlautstärke"}, En{"master volume"}}}},
    {0x40, 0x00, kAll, 0x05, 0x05, {Text{De{"Tonart"}, En{"master key shift"}}}},
    {0x40, 0x00, kAll, 0x06, 0x06, {Text{De{"Panorama"}, En{"master pan"}}}},
    {0x40, 0x01, kAll, 0x10, 0x1F, {Text{De{"Stimmenreserve"}, En{"voice reserve"}}}},
    {0x40, 0x01, kAll, 0x30, 0x37, {Text{De{"Hall"}, En{"reverb"}}}},
    {0x40, 0x01, kAll, 0x38, 0x40, {Text{Both{"Chorus"}}}},
    {0x40, 0x01, kAll, 0x50, 0x5A, {Text{Both{"Delay"}}}},
    {0x40, 0x02, kAll, 0x00, 0x03, {Text{Both{"Equalizer"}}}},
    {0x40, 0x03, kAll, 0x00, 0x7F, {Text{De{"Insert-Effekt"}, En{"insertion effect"}}}},
    {0x40, 0x10, kPartOnly, 0x00, 0x01, {Text{De{"Klang"}, En{"tone"}}, AddressTarget::GsPart}},
    {0x40,
     0x10,
     kPartOnly,
     0x02,
     0x02,
     {Text{De{"Empfangskanal"}, En{"receive channel"}}, AddressTarget::GsPart}},
    {0x40,
     0x10,
     kPartOnly,
     0x15,
     0x15,
     {Text{De{"Rhythmus-Part"}, En{"rhythm part"}}, AddressTarget::GsPart}},
    {0x40,
     0x10,
     kPartOnly,
     0x19,
     0x19,
     {Text{De{"Lautstärke"}, En{"level"}}, AddressTarget::GsPart}},
    {0x40, 0x10, kPartOnly, 0x1C, 0x1C, {Text{De{"Panorama"}, En{"pan"}}, AddressTarget::GsPart}},
    {0x40, 0x10, kPartOnly, 0x21, 0x21, {Text{Both{"Chorus"}}, AddressTarget::GsPart}},
    {0x40, 0x10, kPartOnly, 0x22, 0x22, {Text{De{"Hall"}, En{"reverb"}}, AddressTarget::GsPart}},
    {0x40,
     0x10,
     kPartOnly,
     0x40,
     0x4B,
     {Text{De{"Skalenstimmung"}, En{"scale tuning"}}, AddressTarget::GsPart}},
    {0x40,
     0x10,
     kPartOnly,
     0x00,
     0x7F,
     {Text{De{"Parameter"}, En{"parameter"}}, AddressTarget::GsPart}},
    {0x40,
     0x20,
     kPartOnly,
     0x00,
     0x7F,
     {Text{De{"Controller-Zuordnung"}, En{"controller assignment"}}, AddressTarget::GsPart}},
    {0x40,
     0x40,
     kPartOnly,
     0x22,
     0x22,
     {Text{De{"Insert-Effekt"}, En{"insertion effect"}}, AddressTarget::GsPart}},
    {0x40,
     0x40,
     kPartOnly,
     0x00,
     0x7F,
     {Text{De{"Parameter"}, En{"parameter"}}, AddressTarget::GsPart}},
    {0x41,
     0x00,
     0x00,
     0x00,
     0x7F,
     {Text{De{"Schlagzeug"}, En{"drum set-up"}}, AddressTarget::DrumKey}},
});

constexpr auto kXg = std::to_array<AddressRow>({
    {0x00, 0x00, kAll, 0x7E, 0x7E, {Text{Both{"System On"}}}},
    {0x00,
     0x00,
     kAll,
     0x7F,
     0x7F,
     {Text{De{"alle Parameter zurücksetzen"}, En{"reset all parameters"}}}},
    {0x00, 0x00, kAll, 0x7D, 0x7D, {Text{De{"Schlagzeug zurücksetzen"}, En{"drum set-up reset"}}}},
    {0x00, 0x00, kAll, 0x00, 0x03, {Text{De{"Gesamtstimmung"}, En{"master tune"}}}},
    {0x00, 0x00, kAll, 0x04, 0x04, {Text{De{"Gesamtlautstärke"}, En{"master volume"}}}},
    {0x00, 0x00, kAll, 0x05, 0x05, {Text{De{"Abschwächung"}, En{"master attenuator"}}}},
    {0x00, 0x00, kAll, 0x06, 0x06, {Text{De{"Transponierung"}, En{"transpose"}}}},
    {0x02, 0x01, kAll, 0x00, 0x1F, {Text{De{"Hall"}, En{"reverb"}}}},
    {0x02, 0x01, kAll, 0x20, 0x3F, {Text{Both{"Chorus"}}}},
    {0x02, 0x01, kAll, 0x40, 0x7F, {Text{Both{"Variation"}}}},
    {0x02, 0x40, kAll, 0x00, 0x7F, {Text{Both{"Master-EQ"}}}},
    {0x03, 0x00, 0x00, 0x00, 0x7F, {Text{De{"Insert-Effekt"}, En{"insertion effect"}}}},
    {0x04, 0x00, 0x00, 0x00, 0x7F, {Text{Both{"Vocal Harmony"}}}},
    {0x06, 0x00, kAll, 0x00, 0x7F, {Text{De{"Anzeige"}, En{"display"}}}},
    {0x08, 0x00, 0x00, 0x01, 0x03, {Text{De{"Klang"}, En{"voice"}}, AddressTarget::XgPart}},
    {0x08,
     0x00,
     0x00,
     0x04,
     0x04,
     {Text{De{"Empfangskanal"}, En{"receive channel"}}, AddressTarget::XgPart}},
    {0x08,
     0x00,
     0x00,
     0x07,
     0x07,
     {Text{De{"Part-Modus"}, En{"part mode"}}, AddressTarget::XgPart}},
    {0x08, 0x00, 0x00, 0x0B, 0x0B, {Text{De{"Lautstärke"}, En{"volume"}}, AddressTarget::XgPart}},
    {0x08, 0x00, 0x00, 0x0E, 0x0E, {Text{De{"Panorama"}, En{"pan"}}, AddressTarget::XgPart}},
    {0x08, 0x00, 0x00, 0x12, 0x12, {Text{Both{"Chorus"}}, AddressTarget::XgPart}},
    {0x08, 0x00, 0x00, 0x13, 0x13, {Text{De{"Hall"}, En{"reverb"}}, AddressTarget::XgPart}},
    {0x08, 0x00, 0x00, 0x14, 0x14, {Text{Both{"Variation"}}, AddressTarget::XgPart}},
    {0x08, 0x00, 0x00, 0x00, 0x7F, {Text{De{"Parameter"}, En{"parameter"}}, AddressTarget::XgPart}},
    {0x0A, 0x00, 0x00, 0x00, 0x7F, {Text{De{"Parameter"}, En{"parameter"}}, AddressTarget::XgPart}},
    {0x10, 0x00, 0x00, 0x00, 0x7F, {Text{De{"A/D-Eingang"}, En{"A/D input"}}}},
    {0x30,
     0x00,
     0x00,
     0x00,
     0x7F,
     {Text{De{"Schlagzeug"}, En{"drum set-up"}}, AddressTarget::DrumKey}},
    {0x31,
     0x00,
     0x00,
     0x00,
     0x7F,
     {Text{De{"Schlagzeug 2"}, En{"drum set-up 2"}}, AddressTarget::DrumKey}},
    {0x32,
     0x00,
     0x00,
     0x00,
     0x7F,
     {Text{De{"Schlagzeug 3"}, En{"drum set-up 3"}}, AddressTarget::DrumKey}},
    {0x33,
     0x00,
     0x00,
     0x00,
     0x7F,
     {Text{De{"Schlagzeug 4"}, En{"drum set-up 4"}}, AddressTarget::DrumKey}},
});

template <typename Rows>
const AddressMeaning* MeaningIn(const Rows& rows, const ParameterMessage& message) {
    const auto* found = std::ranges::find_if(rows, [&message](const AddressRow& row) {
        return row.high == message.high && row.middle == (message.middle & row.middleMask) &&
               row.low <= message.low && message.low <= row.lowEnd;
    });
    return found == rows.end() ? nullptr : &found->meaning;
}

struct Model {
    SysexBytes id;
    std::string_view name;
};

constexpr auto kMt32 = std::to_array<std::uint8_t>({0x16});
constexpr auto kDisplay = std::to_array<std::uint8_t>({0x45});
constexpr auto kBk9 = std::to_array<std::uint8_t>({0x00, 0x5C});
constexpr auto kSonicCell = std::to_array<std::uint8_t>({0x00, 0x00, 0x25});
constexpr auto kIntegra7 = std::to_array<std::uint8_t>({0x00, 0x00, 0x64});
constexpr auto kModels = std::to_array<Model>({{kMt32, "MT-32"},
                                               {kDisplay, "Sound Canvas Display"},
                                               {kBk9, "BK-9"},
                                               {kSonicCell, "SonicCell"},
                                               {kIntegra7, "INTEGRA-7"}});

} // namespace

const Text* UniversalMeaning(SysexBytes data) {
    const auto* found = std::ranges::find_if(kUniversal, [data](const UniversalRow& row) {
        return row.id == ByteAt(data, 0) && row.kind == ByteAt(data, 2) &&
               (row.detail == kAny || row.detail == ByteAt(data, 3));
    });
    return found == kUniversal.end() ? nullptr : &found->words;
}

const AddressMeaning* GsMeaning(const ParameterMessage& message) {
    return MeaningIn(kGs, message);
}

const AddressMeaning* XgMeaning(const ParameterMessage& message) {
    return MeaningIn(kXg, message);
}

std::string_view RolandModel(SysexBytes data) {
    constexpr std::size_t kModelByte = 2;
    const SysexBytes model = data.subspan(std::min(kModelByte, data.size()));
    const auto* found = std::ranges::find_if(
        kModels, [model](const Model& candidate) { return StartsWith(model, candidate.id); });
    return found == kModels.end() ? std::string_view() : found->name;
}

const Text* SetUpMeaning(SysexBytes data) {
    const auto* row = std::ranges::find_if(
        kSetUps, [data](const SetUpRow& each) { return StartsWith(data, DataOf(each.beginning)); });
    return row == kSetUps.end() ? nullptr : &row->words;
}

} // namespace tracksmith::instruments
