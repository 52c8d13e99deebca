#include "instruments/importers/import_midnam.h"

#include <gtest/gtest.h>
#include <string>

#include "support/temporary_folder.h"

#include "instruments/importers/import_fixture.h"
#include "instruments/importers/texts.h"

namespace tracksmith::instruments {
namespace {

using test::Bytes;
using test::ExpectRefused;
using test::Lines;
using test::Midnam;

std::string NameSet(std::string_view name, std::string_view parts) {
    return "<ChannelNameSet Name=\"" + std::string(name) + "\">" + std::string(parts) +
           "</ChannelNameSet>\n";
}

std::string Bank(std::string_view name, int msb, int lsb, std::string_view list) {
    return "<PatchBank Name=\"" + std::string(name) +
           "\"><MIDICommands><ControlChange Control=\"0\" Value=\"" + std::to_string(msb) +
           "\"/><ControlChange Control=\"32\" Value=\"" + std::to_string(lsb) +
           "\"/></MIDICommands>" + std::string(list) + "</PatchBank>\n";
}

TEST(ImportMidnam, TakesBanksFromBankAndPatchAndProgramsFromProgramChange) {
    const auto tables = ImportMidnam(Bytes(Midnam(NameSet(
        "Set", Bank("Piano", 8, 2,
                    "<PatchNameList>"
                    "<Patch Number=\"A-12\" Name=\"Later\" ProgramChange=\"5\"/>"
                    "<Patch Number=\"99\" Name=\"Own LSB\" ProgramChange=\"4\"><PatchMIDICommands>"
                    "<ControlChange Control=\"7\" Value=\"100\"/>"
                    "<ControlChange Control=\"32\" Value=\"9\"/></PatchMIDICommands></Patch>"
                    "<Patch Number=\"1\" Name=\"Own program\"><MIDICommands>"
                    "<ControlChange Control=\"0\" Value=\"0\"/><ProgramChange Number=\"127\"/>"
                    "</MIDICommands></Patch>"
                    "<Patch Number=\"3\" Name=\"Without\"/>"
                    "<Patch Number=\"4\" Name=\" \" ProgramChange=\"4\"/>"
                    "</PatchNameList>")))));
    ASSERT_EQ(tables.size(), 1U);
    EXPECT_EQ(tables[0].modelName, "Maker One");
    EXPECT_EQ(tables[0].leftOut, 2U);
    EXPECT_EQ(Lines(tables[0]),
              "Voices|Piano|0|2|127|Own program\nVoices|Piano|8|2|5|Later\n"
              "Voices|Piano|8|9|4|Own LSB\n");
}

TEST(ImportMidnam, FollowsReferencesWithinTheirDevice) {
    const std::string list =
        "<PatchNameList Name=\"L\"><Patch Name=\"a\" ProgramChange=\"1\"/>"
        "</PatchNameList>\n";
    const auto tables = ImportMidnam(Bytes(
        Midnam(NameSet("Set", Bank("One", 0, 0, "<UsesPatchNameList Name=\"L\"/>") +
                                  Bank("Two", 0, 1, "<UsesPatchNameList Name=\"L\"/>") +
                                  Bank("Three", 0, 2, "<UsesPatchNameList Name=\"M\"/>")) +
               list +
               // Another device of the same document, whose list has the same name.
               "</MasterDeviceNames><MasterDeviceNames><Manufacturer>Maker</Manufacturer>"
               "<Model>Maker Two</Model><Model>Three</Model>" +
               NameSet("Set", Bank("One", 0, 0, "<UsesPatchNameList Name=\"L\"/>")) +
               "<PatchNameList Name=\"L\"><Patch Name=\"b\" ProgramChange=\"1\"/></PatchNameList>"
               "</MasterDeviceNames><StandardDeviceMode Name=\"General MIDI\">" +
               NameSet("Set", Bank("", 0, 0, list)) + "</StandardDeviceMode><MasterDeviceNames>")));
    ASSERT_EQ(tables.size(), 4U);
    EXPECT_EQ(Lines(tables[0]), "Voices|One|0|0|1|a\nVoices|Two|0|1|1|a\n");
    EXPECT_EQ(tables[0].leftOut, 1U);
    EXPECT_EQ(tables[1].modelName, "Maker Two");
    EXPECT_EQ(tables[2].modelName, "Maker Three");
    EXPECT_EQ(Lines(tables[2]), "Voices|One|0|0|1|b\n");
    EXPECT_EQ(tables[3].modelName, "General MIDI");
    EXPECT_EQ(Lines(tables[3]), "Voices|Set|0|0|1|a\n");
}

TEST(ImportMidnam, TellsKitsFromVoices) {
    const std::string patch =
        "<PatchNameList><Patch Name=\"p\" ProgramChange=\"0\"/>"
        "</PatchNameList>";
    const std::string only10 =
        "<AvailableForChannels>"
        "<AvailableChannel Channel=\"1\" Available=\"false\"/>"
        "<AvailableChannel Channel=\"10\" Available=\"true\"/>"
        "</AvailableForChannels>";
    const auto tables = ImportMidnam(Bytes(Midnam(
        "<CustomDeviceMode Name=\"M\"><ChannelNameSetAssignments>"
        "<ChannelNameSetAssign Channel=\"1\" NameSet=\"Two\"/>"
        "<ChannelNameSetAssign Channel=\"10\" NameSet=\"Assigned\"/>"
        "</ChannelNameSetAssignments></CustomDeviceMode>" +
        NameSet("Available", only10 + Bank("a", 1, 0, patch)) +
        NameSet("Assigned", Bank("b", 2, 0, patch)) + NameSet("Two", Bank("c", 3, 0, patch)) +
        NameSet("Three", Bank("d", 4, 0,
                              "<PatchNameList><Patch Name=\"kit\" ProgramChange=\"0\">"
                              "<UsesNoteNameList Name=\"Keys\"/></Patch></PatchNameList>")))));
    EXPECT_EQ(Lines(tables.at(0)),
              "Drums|a|1|0|0|p\nDrums|b|2|0|0|p\nDrums|d|4|0|0|kit\n"
              "Two|c|3|0|0|p\n");
}

TEST(ImportMidnam, ReadsLatin1AndCharacterReferences) {
    std::string file =
        Midnam(NameSet("S", Bank("B", 0, 0,
                                 "<PatchNameList><Patch Name=\"H\xF6rner &amp; &#x266A;\t&other;\" "
                                 "ProgramChange=\"0\"/></PatchNameList>")));
    EXPECT_EQ(Lines(ImportMidnam(Bytes(file)).at(0)), "Voices|B|0|0|0|Hörner & ♪ &other;\n");
    // Lines are those of the file although its umlauts are longer in memory.
    file.insert(file.find("<ChannelNameSet"), "<!-- \xF6\xF6\xF6\xF6\xF6\xF6\xF6\n\xF6 -->\n");
    file.replace(file.find("ProgramChange=\"0\""), 17, "ProgramChange=\"128\"");
    ExpectRefused(ImportMidnam, file, texts::kMidnamNumber, 6);
}

TEST(ImportMidnam, TablesCanBeSavedAndReadAgain) {
    const tracksmith::test::TemporaryFolder folder;
    const std::string longName(300, 'x');
    const auto tables = ImportMidnam(Bytes(Midnam(
        NameSet(longName, Bank(longName, 0, 0,
                               "<PatchNameList><Patch Name=\"" + longName +
                                   "\" ProgramChange=\"0\"/><Patch Name=\"a&#9;b&#10;c&#x85;d\" "
                                   "ProgramChange=\"1\"/></PatchNameList>")))));
    const auto path = SaveUserTable(folder.Path(), 62, tables.at(0).table);
    EXPECT_EQ(VoiceTableText(ReadVoiceTableFile(path).Voices()),
              VoiceTableText(tables[0].table.Voices()));
    EXPECT_EQ(tables[0].table.Voices()[1].name, "a b c d");
}

TEST(ImportMidnam, NamesWhatIsWrongAndWhere) {
    const auto withPatch = [](const std::string& patch) {
        return Midnam(
            NameSet("S", Bank("B", 0, 0, "<PatchNameList>\n" + patch + "</PatchNameList>")));
    };
    const auto refused = [](const std::string& file, const Text& reason, std::size_t line) {
        ExpectRefused(ImportMidnam, file, reason, line);
    };
    refused(withPatch("<Patch Name=\"a\" ProgramChange=\"-1\"/>"), texts::kMidnamNumber, 5);
    refused(withPatch("<Patch Name=\"a\" ProgramChange=\"1b\"/>"), texts::kMidnamNumber, 5);
    refused(withPatch("<Patch Name=\"a\" ProgramChange=\"1\"><PatchMIDICommands>\n<ControlChange "
                      "Control=\"0\"/></PatchMIDICommands></Patch>"),
            texts::kMidnamNumber, 6);
    refused(withPatch("<Patch Name=\"a\"><Patch>"), texts::kXmlFault, 5);
    refused(withPatch(""), texts::kImportNoVoices, 0);
    refused("<other/>", texts::kNotMidnam, 0);
    refused("", texts::kXmlFault, 1);
}

} // namespace
} // namespace tracksmith::instruments
