#include "instruments/importers/import_ins.h"

#include <gtest/gtest.h>
#include <string>

#include "instruments/importers/import_fixture.h"
#include "instruments/importers/texts.h"

namespace tracksmith::instruments {
namespace {

using test::Bytes;
using test::ExpectRefused;
using test::Lines;

constexpr std::string_view kLists =
    "; a comment\r\n"
    ".Patch Names\r\n"
    "\r\n"
    "[Base]\r\n"
    "0=Base 0\r\n"
    "1 = Base 1 ; comment\r\n"
    "[Piano]\r\n"
    "basedon=Base\r\n"
    "1=Piano;1\r\n"
    "2=\r\n"
    "[Kits]\r\n"
    "0=Standard\r\n"
    "8=Room\r\n"
    ".Note Names\r\n"
    "[Piano]\r\n"
    "300=no patch\r\n"
    ".Instrument Definitions\r\n";

std::string File(std::string_view definitions) {
    return std::string(kLists) + std::string(definitions);
}

TEST(ImportIns, ListsAreBasedOnOthers) {
    const auto tables =
        ImportIns(Bytes(File("[Maker One]\nPatch[1025]=Piano\nControl=Standard\n"
                             "[Empty]\nPatch[*]=0..127\nPatch[5]=Missing\n")));
    ASSERT_EQ(tables.size(), 1U);
    EXPECT_EQ(tables[0].modelName, "Maker One");
    EXPECT_EQ(Lines(tables[0]), "Voices|Piano|8|1|0|Base 0\nVoices|Piano|8|1|1|Piano;1\n");
    EXPECT_EQ(tables[0].leftOut, 1U);
}

TEST(ImportIns, DrumLinesMarkKits) {
    const auto tables =
        ImportIns(Bytes(File("[I]\nPatch[16256]=Kits\nDrum[16256,*]=1\n"
                             "Drum[16256,8]=0\nPatch[0]=Kits\nDrum[*,0]=1\n")));
    EXPECT_EQ(Lines(tables.at(0)),
              "Drums|Kits|0|0|0|Standard\nDrums|Kits|127|0|0|Standard\n"
              "Voices|Kits|0|0|8|Room\nVoices|Kits|127|0|8|Room\n");
}

TEST(ImportIns, KitBanksOfGm2AndXgHoldKits) {
    const auto linesOf = [](const std::string& name, const std::string& bank) {
        const auto tables = ImportIns(Bytes(File("[" + name + "]\nPatch[" + bank + "]=Kits\n")));
        return Lines(tables.at(0)).substr(0, 6);
    };
    EXPECT_EQ(linesOf("Any", "15360"), "Drums|"); // MSB 120
    EXPECT_EQ(linesOf("Yamaha X", "16256"), "Drums|");
    EXPECT_EQ(linesOf("Roland X", "16256"), "Voices");
    EXPECT_EQ(linesOf("Yamaha X", "15488"), "Voices"); // MSB 121
}

TEST(ImportIns, CapitalsMakeNoDifference) {
    const auto tables =
        ImportIns(Bytes(".patch names\n[GRAND]\n0=One\n[Upright]\nBASEDON=grand\n"
                        ".instrument definitions\n[I]\nPATCH[0]=upright\n"));
    EXPECT_EQ(Lines(tables.at(0)), "Voices|upright|0|0|0|One\n");
}

struct MethodRow {
    std::string settings;
    std::string bank;
};

class BankSelMethodTest : public testing::TestWithParam<MethodRow> {};

TEST_P(BankSelMethodTest, TellsWhatABankNumberMeans) {
    const auto tables = ImportIns(Bytes(File("[I]\n" + GetParam().settings)));
    EXPECT_EQ(Lines(tables.at(0)), "Voices|Kits|" + GetParam().bank + "|0|Standard\nVoices|Kits|" +
                                       GetParam().bank + "|8|Room\n");
}

INSTANTIATE_TEST_SUITE_P(Methods, BankSelMethodTest,
                         testing::Values(MethodRow{"Patch[16383]=Kits", "127|127"},
                                         MethodRow{"Patch[130]=Kits\nBankSelMethod=0", "1|2"},
                                         MethodRow{"BankSelMethod=1\nPatch[64]=Kits", "64|0"},
                                         MethodRow{"BankSelMethod=1\nPatch[8192]=Kits", "64|0"},
                                         MethodRow{"BankSelMethod=2\nPatch[64]=Kits", "0|64"},
                                         MethodRow{"BankSelMethod=3\nPatch[5]=Kits", "0|0"},
                                         MethodRow{"Patch[*]=Kits", "0|0"},
                                         MethodRow{"Patch[*]=Piano\nPatch[0]=Kits", "0|0"}),
                         [](const auto& row) { return "Row" + std::to_string(row.index); });

TEST(ImportIns, ReadsLatin1AndUtf8) {
    const auto name = [](const std::string& bytes) {
        const auto tables =
            ImportIns(Bytes(bytes + "\n.Instrument Definitions\n[I]\nPatch[0]=L\n"));
        return std::string(tables.at(0).table.Voices()[0].name);
    };
    EXPECT_EQ(name(".Patch Names\n[L]\n0=H\xF6rner"), "Hörner");
    EXPECT_EQ(name("\xEF\xBB\xBF.Patch Names\n[L]\n0=Hörner"), "Hörner");
}

struct FaultRow {
    std::string file;
    const Text& reason;
    std::size_t line;
};

class ImportInsFaultTest : public testing::TestWithParam<FaultRow> {};

TEST_P(ImportInsFaultTest, IsNamedWithItsLine) {
    ExpectRefused(ImportIns, GetParam().file, GetParam().reason, GetParam().line);
}

std::string Chain(int lists) {
    std::string text = ".Patch Names\n";
    for (int i = 0; i < lists; ++i) {
        text += "[L" + std::to_string(i) + "]\nBasedOn=L" + std::to_string(i + 1) + '\n';
    }
    return text + "[L" + std::to_string(lists) +
           "]\n0=a\n.Instrument Definitions\n[I]\nPatch[0]=L0\n";
}

INSTANTIATE_TEST_SUITE_P(
    Faults, ImportInsFaultTest,
    testing::Values(
        FaultRow{"", texts::kInsNoSection, 1}, FaultRow{"text", texts::kInsLine, 1},
        FaultRow{"; none\n.Note Names\n[L]\n.Controller Names", texts::kInsNoSection, 2},
        FaultRow{".Note Names\n.patch names", texts::kImportNoVoices, 0},
        FaultRow{".Patch Names\n0=a", texts::kInsLine, 2},
        FaultRow{".Patch Names\n[L", texts::kInsLine, 2},
        FaultRow{".Patch Names\n[L]\n0", texts::kInsLine, 3},
        FaultRow{".Patch Names\n[L]\n128=a", texts::kInsProgram, 3},
        FaultRow{".Patch Names\n[L]\nx=a", texts::kInsProgram, 3},
        FaultRow{File("[I]\nPatch[16384]=Kits"), texts::kInsBank, 19},
        FaultRow{File("[I]\nPatch[-1]=Kits"), texts::kInsBank, 19},
        FaultRow{File("[I]\nPatch=Kits"), texts::kInsLine, 19},
        FaultRow{File("[I]\nDrum[1]=1"), texts::kInsLine, 19},
        FaultRow{File("[I]\nDrum[1,200]=1"), texts::kInsProgram, 19},
        FaultRow{File("[I]\nBankSelMethod=4"), texts::kInsMethod, 19},
        FaultRow{File("[I]\nPatch[200]=Kits\nBankSelMethod=2"), texts::kInsBank, 19},
        FaultRow{File("[I]\nPatch[129]=Kits\nBankSelMethod=1"), texts::kInsBank, 19},
        FaultRow{Chain(40), texts::kReferenceDepth, 65},
        FaultRow{".Patch Names\n[L]\nBasedOn=L\n.Instrument Definitions\n[I]\nPatch[0]=L",
                 texts::kReferenceDepth, 3}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

TEST(ImportIns, FollowsASensibleChain) {
    EXPECT_EQ(ImportIns(Bytes(Chain(20))).at(0).table.Voices().size(), 1U);
}

} // namespace
} // namespace tracksmith::instruments
