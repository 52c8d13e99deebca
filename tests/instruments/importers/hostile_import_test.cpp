#include <chrono>
#include <gtest/gtest.h>
#include <string>

#include "base/system/thread_timing.h"

#include "instruments/importers/import_fixture.h"
#include "instruments/importers/texts.h"
#include "instruments/voices/texts.h"

// Files that are made to exhaust memory or time: each is refused or read, in time that grows with
// its size only.

namespace tracksmith::instruments {
namespace {

using test::Bytes;
using test::ExpectRefused;
using test::Import;
using test::Midnam;
using test::Repeated;

constexpr std::string_view kPatch = "<Patch Name=\"a\" ProgramChange=\"0\"/>";

std::string OneSet(std::string_view parts) {
    return Midnam("<ChannelNameSet Name=\"S\">" + std::string(parts) + "</ChannelNameSet>");
}

std::string ManyBanks(std::size_t banks, const std::string& list) {
    return OneSet(Repeated(banks, "<PatchBank><UsesPatchNameList Name=\"L\"/></PatchBank>") +
                  "<PatchNameList Name=\"L\">" + list + "</PatchNameList>");
}

// Each list refers to the next one many times.
std::string Branching(int levels, std::size_t references) {
    std::string lists = "<PatchBank><UsesPatchNameList Name=\"L0\"/></PatchBank>";
    for (int i = 0; i < levels; ++i) {
        lists +=
            "<PatchNameList Name=\"L" + std::to_string(i) + "\">" +
            Repeated(references, "<UsesPatchNameList Name=\"L" + std::to_string(i + 1) + "\"/>") +
            "</PatchNameList>";
    }
    return OneSet(lists);
}

std::string InsBanks(std::size_t banks, std::string_view list) {
    return ".Patch Names\n[L]\n" + std::string(list) + "\n.Instrument Definitions\n[I]\n" +
           Repeated(banks, "Patch[0]=L\n");
}

struct HostileRow {
    const char* what;
    Import import;
    std::string file;
    const Text& reason;
    std::size_t line;
};

class HostileImportTest : public testing::TestWithParam<HostileRow> {};

TEST_P(HostileImportTest, IsRefusedSoon) {
    const auto begin = system::ProcessorTime();
    const HostileRow& row = GetParam();
    ExpectRefused(row.import, row.file, row.reason, row.line);
    const std::chrono::duration<double> took = system::ProcessorTime() - begin;
    EXPECT_LT(took.count(), 20) << row.what; // less than 1 s without sanitizers
}

INSTANTIATE_TEST_SUITE_P(
    Midnam, HostileImportTest,
    testing::Values(
        HostileRow{"size", ImportMidnam, std::string(kMostImportBytes + 1, ' '),
                   texts::kImportTooLarge, 0},
        HostileRow{"NUL", ImportMidnam, "<a>\n" + std::string(1, '\0') + "</a>",
                   texts::kImportNotText, 2},
        HostileRow{"entities", ImportMidnam,
                   "<!DOCTYPE d [<!ENTITY a \"ha\"><!ENTITY b \"&a;&a;&a;&a;\">]>\n<d>&b;</d>",
                   texts::kXmlEntities, 0},
        HostileRow{"depth", ImportMidnam, Repeated(2'000'000, "<a>"), texts::kXmlFault, 1},
        HostileRow{"closed depth", ImportMidnam,
                   OneSet(Repeated(300'000, "<PatchBank>") + Repeated(300'000, "</PatchBank>")),
                   texts::kImportNoVoices, 0},
        HostileRow{"long name", ImportMidnam, OneSet(std::string(8'000'000, 'x')),
                   texts::kImportNoVoices, 0},
        HostileRow{"loop", ImportMidnam, ManyBanks(1, "\n<UsesPatchNameList Name=\"L\"/>"),
                   texts::kReferenceDepth, 5},
        HostileRow{"branching", ImportMidnam, Branching(10, 100), texts::kImportTooManyReferences,
                   4},
        HostileRow{"banks times patches", ImportMidnam, ManyBanks(500, Repeated(500, kPatch)),
                   texts::kImportTooMany, 4},
        HostileRow{"banks times left out", ImportMidnam,
                   ManyBanks(50'000, Repeated(100'000, "<Patch/>")),
                   texts::kImportTooManyReferences, 4},
        HostileRow{"banks times others", ImportMidnam, ManyBanks(50'000, Repeated(300'000, "<x/>")),
                   texts::kImportNoVoices, 0},
        HostileRow{"models", ImportMidnam,
                   Midnam(Repeated(400'000, "<Model>m</Model>") +
                          "<ChannelNameSet><PatchBank><PatchNameList>" + std::string(kPatch) +
                          "</PatchNameList></PatchBank></ChannelNameSet>"),
                   texts::kImportTooMany, 0},
        HostileRow{"families", ImportMidnam, Midnam([] {
                       std::string sets;
                       for (int i = 0; i < 2'000; ++i) {
                           sets += "<ChannelNameSet Name=\"" + std::to_string(i) +
                                   "\"><PatchBank><PatchNameList>" + std::string(kPatch) +
                                   "</PatchNameList></PatchBank></ChannelNameSet>";
                       }
                       return sets;
                   }()),
                   texts::kTooManyFamilies, 0}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

INSTANTIATE_TEST_SUITE_P(
    Ins, HostileImportTest,
    testing::Values(
        HostileRow{"size", ImportIns, std::string(10'000'000, 'x'), texts::kImportTooLarge, 0},
        HostileRow{"line", ImportIns, ".Patch Names\n[" + std::string(8'000'000, 'x') + "]",
                   texts::kInsLineTooLong, 2},
        HostileRow{"NUL", ImportIns, std::string(".\0P", 3), texts::kImportNotText, 1},
        HostileRow{"lists", ImportIns, ".Patch Names\n" + Repeated(1'000'000, "[L]\n0=a\n"),
                   texts::kImportNoVoices, 0},
        HostileRow{"references", ImportIns, InsBanks(700'000, "0=a"), texts::kImportTooMany,
                   65'542},
        HostileRow{"empty references", ImportIns, InsBanks(700'000, ""), texts::kImportNoVoices, 0},
        HostileRow{"definitions", ImportIns,
                   ".Patch Names\n[L]\n0=a\n.Instrument Definitions\n" +
                       Repeated(400'000, "[I]\nPatch[0]=L\n"),
                   texts::kImportTooMany, 262'150}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

TEST(HostileImport, NothingIsFetchedFromElsewhere) {
    const std::string file =
        "<!DOCTYPE MIDINameDocument SYSTEM \"file:///nowhere\">" +
        OneSet("<PatchBank><PatchNameList>" + std::string(kPatch) + "</PatchNameList></PatchBank>")
            .substr(OneSet("").find("<MIDINameDocument>"));
    EXPECT_EQ(ImportMidnam(Bytes(file)).size(), 1U);
}

} // namespace
} // namespace tracksmith::instruments
