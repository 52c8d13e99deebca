#include "sysex_fixture.h"

#include "instruments/sysex/describe_sysex.h"
#include "instruments/sysex/sysex_family.h"

namespace tracksmith::test {
namespace {

using instruments::DescribeSysex;
using instruments::FamilyName;
using instruments::SysexFamily;
using instruments::SysexFamilyOf;

struct Case {
    const char* hex;
    const char* german;
    const char* english;
    SysexFamily family;
};

class Describe : public testing::TestWithParam<Case> {};

TEST_P(Describe, NamesMakerAndMeaning) {
    const Case& expected = GetParam();
    const Bytes message = FromHex(expected.hex);
    const auto words = DescribeSysex(message);
    EXPECT_EQ(words.In(Language::German), expected.german);
    EXPECT_EQ(words.In(Language::English), expected.english);
    EXPECT_EQ(SysexFamilyOf(message), expected.family);
}

INSTANTIATE_TEST_SUITE_P(
    Messages, Describe,
    testing::Values(
        Case{"F0 7E 7F 09 01 F7", "GM System On", "GM System On", SysexFamily::Gm},
        Case{"F0 7E 7F 09 03 F7", "GM2 System On", "GM2 System On", SysexFamily::Gm2},
        Case{"F0 7F 7F 04 01 00 60 F7", "Gesamtlautstärke", "master volume",
             SysexFamily::Universal},
        Case{"F0 7F 7F 04 05 01 01 F7", "GM2-Effektparameter", "GM2 effect parameter",
             SysexFamily::Gm2},
        Case{"F0 7E 10 06 01 F7", "Geräteabfrage", "device inquiry", SysexFamily::Universal},
        Case{"F0 7F 7F 01 01 20 00 00 00 F7", "MIDI-Timecode", "MIDI time code",
             SysexFamily::Universal},
        Case{"F0 7F 7F 55 F7", "universell 7F 7F 55 F7", "universal 7F 7F 55 F7",
             SysexFamily::Universal},
        Case{"F0 41 10 42 12 40 00 7F 00 41 F7", "GS Reset, Gerät 10", "GS Reset, device 10",
             SysexFamily::Gs},
        Case{"F0 41 10 42 12 40 10 15 01 1A F7", "GS: Rhythmus-Part, Kanal 10, Wert 01",
             "GS: rhythm part, channel 10, value 01", SysexFamily::Gs},
        Case{"F0 41 00 42 12 40 1A 15 01 10 F7", "GS: Rhythmus-Part, Kanal 11, Wert 01, Gerät 00",
             "GS: rhythm part, channel 11, value 01, device 00", SysexFamily::Gs},
        Case{"F0 41 10 42 12 40 01 30 04 00 F7", "GS: Hall, Wert 04, falsche Prüfsumme",
             "GS: reverb, value 04, wrong checksum", SysexFamily::Gs},
        Case{"F0 41 10 42 12 50 00 00 01 2F F7", "GS: Adresse 50 00 00, Wert 01",
             "GS: address 50 00 00, value 01", SysexFamily::Gs},
        Case{"F0 41 10 00 00 64 12 18 00 50 00 01 16 F7", "Roland INTEGRA-7, 14 Bytes",
             "Roland INTEGRA-7, 14 bytes", SysexFamily::Roland},
        Case{"F0 41 10 00 00 2B 12 F7", "Roland, Modell 00 00 2B, 8 Bytes",
             "Roland, model 00 00 2B, 8 bytes", SysexFamily::Roland},
        Case{"F0 43 10 4C 00 00 7E 00 F7", "XG System On", "XG System On", SysexFamily::Xg},
        Case{"F0 43 10 4C 08 02 0B 64 F7", "Yamaha XG: Lautstärke, Part 3, Wert 64",
             "Yamaha XG: volume, part 3, value 64", SysexFamily::Xg},
        Case{"F0 43 10 4C 30 24 02 40 F7", "Yamaha XG: Schlagzeug, Taste 36, Wert 40",
             "Yamaha XG: drum set-up, key 36, value 40", SysexFamily::Xg},
        Case{"F0 43 00 4C 00 10 02 01 00 F7", "Yamaha XG: Datenblock, 10 Bytes",
             "Yamaha XG: bulk dump, 10 bytes", SysexFamily::Xg},
        Case{"F0 43 73 01 06 0B 00 F7", "Yamaha: Organ Flutes, 8 Bytes",
             "Yamaha: Organ Flutes, 8 bytes", SysexFamily::Yamaha},
        Case{"F0 43 7E 00 08 7F F7", "Yamaha, Modell 7E, 7 Bytes", "Yamaha, model 7E, 7 bytes",
             SysexFamily::Yamaha},
        Case{"F0 42 30 60 00 F7", "Korg, Modell 60, 6 Bytes", "Korg, model 60, 6 bytes",
             SysexFamily::Korg},
        Case{"F0 26 7B 0E 00 01 F7", "Ketron: Grundeinstellung", "Ketron: set-up",
             SysexFamily::Ketron},
        Case{"F0 26 01 02 03 F7", "Ketron, 6 Bytes", "Ketron, 6 bytes", SysexFamily::Ketron},
        Case{"F0 50 2C F7", "Technics, 4 Bytes", "Technics, 4 bytes", SysexFamily::Technics},
        Case{"F0 00 20 29 02 F7", "Novation, 6 Bytes", "Novation, 6 bytes", SysexFamily::Other},
        Case{"F0 00 20 01 02 F7", "Hersteller 00 20 01, 6 Bytes", "manufacturer 00 20 01, 6 bytes",
             SysexFamily::Other},
        Case{"F0 7D 01 F7", "nicht kommerziell (7D), 4 Bytes", "non-commercial (7D), 4 bytes",
             SysexFamily::Other},
        Case{"F0 42 30", "Korg, 3 Bytes, nicht abgeschlossen", "Korg, 3 bytes, not terminated",
             SysexFamily::Korg},
        Case{"F0 F7", "leere Meldung", "empty message", SysexFamily::Other},
        Case{"", "leere Meldung", "empty message", SysexFamily::None}));

TEST(Describe, EveryBeginningOfAMessageHasWords) {
    for (const char* hex :
         {"F0 41 10 42 12 40 10 15 01 1A F7", "F0 43 10 4C 08 02 0B 64 F7",
          "F0 43 73 01 11 00 50 F7", "F0 7F 7F 04 05 01 01 F7", "F0 00 20 29 02 F7"}) {
        const Bytes bytes = FromHex(hex);
        for (std::size_t size = 0; size <= bytes.size(); ++size) {
            const std::vector<std::uint8_t> part(bytes.begin(),
                                                 bytes.begin() + static_cast<long>(size));
            EXPECT_FALSE(DescribeSysex(part).english.empty());
            EXPECT_FALSE(FamilyName(SysexFamilyOf(part)).german.empty());
        }
    }
}

} // namespace
} // namespace tracksmith::test
