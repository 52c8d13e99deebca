#include "instruments/sysex/sysex_family.h"

#include <array>

#include "instruments/sysex/sysex_patterns.h"
#include "instruments/sysex/texts.h"

namespace tracksmith::instruments {
namespace {

constexpr auto kNames = std::to_array<Text>(
    {texts::kNoFamily, Text{Both{"GM"}}, Text{Both{"GM2"}}, Text{Both{"GS"}}, Text{Both{"XG"}},
     Text{Both{"Roland"}}, Text{Both{"Yamaha"}}, Text{Both{"Korg"}}, Text{Both{"Ketron"}},
     Text{Both{"Technics"}}, texts::kUniversal, texts::kOtherMaker});

static_assert(kNames.size() == static_cast<std::size_t>(SysexFamily::Count));

// GM System On and Off are 09 01 and 09 02, GM2 System On is 09 03 (RP-024).
SysexFamily NonRealTimeFamily(SysexBytes data) {
    if (ByteAt(data, 2) != 0x09) {
        return SysexFamily::Universal;
    }
    return ByteAt(data, 3) == 0x03 ? SysexFamily::Gm2 : SysexFamily::Gm;
}

// Global parameter control (04 05), controller destinations (09) and key-based controllers (0A)
// came with GM2.
SysexFamily RealTimeFamily(SysexBytes data) {
    const int kind = ByteAt(data, 2);
    const bool gm2 = (kind == 0x04 && ByteAt(data, 3) == 0x05) || kind == 0x09 || kind == 0x0A;
    return gm2 ? SysexFamily::Gm2 : SysexFamily::Universal;
}

SysexFamily YamahaFamily(SysexBytes data) {
    const bool xg = ByteAt(data, 2) == 0x4C && ByteAt(data, 1) < 0x40;
    return xg ? SysexFamily::Xg : SysexFamily::Yamaha;
}

} // namespace

SysexFamily SysexFamilyOf(SysexBytes message) {
    const SysexBytes data = message.empty() ? message : DataOf(message);
    switch (ByteAt(data, 0)) {
        case -1:
            return SysexFamily::None;
        case kUniversalNonRealTime:
            return NonRealTimeFamily(data);
        case kUniversalRealTime:
            return RealTimeFamily(data);
        case kRolandId:
            return ByteAt(data, 2) == 0x42 ? SysexFamily::Gs : SysexFamily::Roland;
        case kYamahaId:
            return YamahaFamily(data);
        case kKorgId:
            return SysexFamily::Korg;
        case kKetronId:
            return SysexFamily::Ketron;
        case kTechnicsId:
            return SysexFamily::Technics;
        default:
            return SysexFamily::Other;
    }
}

const Text& FamilyName(SysexFamily family) {
    return kNames.at(static_cast<std::size_t>(family));
}

} // namespace tracksmith::instruments
