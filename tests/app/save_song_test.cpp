#include "app/save_song.h"

#include <functional>
#include <gtest/gtest.h>

#include "base/system/file_io.h"
#include "support/session_edit.h"
#include "support/song_assert.h"
#include "support/temporary_folder.h"

#include "app/load_sequence.h"

namespace tracksmith::app {
namespace {

using namespace test;

class SaveSongTest : public testing::Test {
protected:
    void SetUp() override {
        OpenMidiData(session_, RandomFile(7, 1), "start.mid", host_);
        session_.MarkModified();
    }
    std::string SaveError(const std::filesystem::path& file, Language language) {
        RecordingMessageHost host(language);
        try {
            SaveMidiFile(session_, file, SaveFormat::AsSong, host);
        } catch (const EMidiError& error) {
            EXPECT_EQ(host.messages, std::vector<std::string>{error.what()});
            EXPECT_TRUE(session_.Modified());
            EXPECT_EQ(session_.Work().file.name, "start.mid");
            return error.what();
        }
        ADD_FAILURE() << "no error";
        return {};
    }

    Bytes Coded(session::Session& session, SaveFormat format) {
        const auto bytes = EncodeSong(session, format, host_);
        return {bytes.begin(), bytes.end()};
    }

    TemporaryFolder folder_;
    session::Session session_;
    RecordingMessageHost host_;
};

TEST_F(SaveSongTest, EveryFormatLoadsAgainAndCountsAsSaved) {
    const std::vector<std::pair<SaveFormat, int>> rows = {
        {SaveFormat::AsSong, 1}, {SaveFormat::Format0, 0}, {SaveFormat::Format1, 1}};
    for (const auto& [format, expected] : rows) {
        session_.MarkModified();
        SaveMidiFile(session_, folder_ / "saved.mid", format, host_);
        EXPECT_FALSE(session_.Modified());
        EXPECT_EQ(session_.Work().file.name, folder_ / "saved.mid");
        EXPECT_EQ(FileBytes(folder_ / "saved.mid"), Coded(session_, format));
        session::Session again;
        OpenMidiFile(again, folder_ / "saved.mid", host_);
        EXPECT_EQ(again.Song().format, expected);
        EXPECT_EQ(again.Song().songLength, session_.Work().song.songLength);
    }
    session::Session single;
    OpenMidiData(single, RandomFile(8, 0), "x.mid", host_);
    EXPECT_EQ(Coded(single, SaveFormat::AsSong), Coded(single, SaveFormat::Format0));
    EXPECT_NE(Coded(single, SaveFormat::AsSong), Coded(single, SaveFormat::Format1));
}

TEST_F(SaveSongTest, OptionsHold) {
    const std::size_t size = Coded(session_, SaveFormat::Format1).size();
    session_.Options().encodeOptions.omitPortEvents = true;
    const auto tracks = static_cast<std::size_t>(session_.Work().song.trackCount);
    EXPECT_EQ(Coded(session_, SaveFormat::Format1).size(), size - 5 * tracks);
    session_.Options().encodeOptions.useRunningStatus = true;
    EXPECT_LT(Coded(session_, SaveFormat::Format1).size(), size - 5 * tracks);
}

TEST_F(SaveSongTest, AFileThatCannotBeCreatedIsNamed) {
    const std::filesystem::path file = folder_ / "missing" / "song.mid";
    const std::string name = system::PathText(file);
    EXPECT_EQ(SaveError(file, Language::German), "Fehler: Schreibvorgang der Datei \"" + name +
                                                     "\" konnnte nicht eingeleitet werden!\n"
                                                     "Diese Datei oder diesen Ordner gibt es "
                                                     "nicht.");
    EXPECT_EQ(SaveError(file, Language::English),
              "Error rewriting the midi file \"" + name + "\nThere is no such file or folder.");
}

TEST_F(SaveSongTest, ASongThatCannotBeCodedLeavesTheFileAlone) {
    PutFile(folder_ / "song.mid", Bytes(9, 1));
    EditSession(session_,
                [](session::Workspace& work) { work.song.tracks[0].first->next->kind = 7; });
    EXPECT_EQ(SaveError(folder_ / "song.mid", Language::German),
              "Fehler bei der Kodierung der MidiDatei!");
    EXPECT_EQ(SaveError(folder_ / "song.mid", Language::English), "Error coding the midi file!");
    EXPECT_EQ(FileBytes(folder_ / "song.mid"), Bytes(9, 1));
}

#ifndef _WIN32

TEST_F(SaveSongTest, AFullDiskIsToldAndTheOldBytesStay) {
    const std::filesystem::path file = folder_ / "song.mid";
    PutFile(file, Bytes(9, 1));
    const std::string name = system::PathText(file);
    const std::string size = std::to_string(Coded(session_, SaveFormat::AsSong).size());
    const std::string reason = "Die Datei wird für diesen Datenträger zu groß.";
    {
        const FileSizeLimit full(50);
        EXPECT_EQ(SaveError(file, Language::German), "Beim Speichern der Datei \"" + name +
                                                         "\" sind nur 50 aus " + size +
                                                         " Bytes gespeichert\n" + reason);
        EXPECT_EQ(SaveError(file, Language::English), "Error saving the midi file \"" + name +
                                                          "\"\nThere were only 50 from " + size +
                                                          " bytes saved\n"
                                                          "The file grows too large for this "
                                                          "disk.");
    }
    {
        const FileSizeLimit full(0);
        EXPECT_EQ(SaveError(file, Language::German),
                  "Fehler beim Schreiben der Datei \"" + name + "\n" + reason);
        EXPECT_EQ(
            SaveError(file, Language::English),
            "Error writing the midi file \"" + name + "\nThe file grows too large for this disk.");
    }
    EXPECT_EQ(FileBytes(file), Bytes(9, 1));
    EXPECT_EQ(folder_.Count(), 1);
}

#endif

TEST_F(SaveSongTest, OverwritingIsAskedForExistingFilesOnly) {
    const std::filesystem::path file = folder_ / "song.mid";
    RecordingMessageHost german(Language::German);
    RecordingMessageHost english;
    EXPECT_TRUE(ConfirmOverwrite(file, german));
    EXPECT_TRUE(german.questions.empty());
    PutFile(file, Bytes(1));
    const std::string name = system::PathText(file);
    EXPECT_FALSE(ConfirmOverwrite(file, german));
    english.answer = true;
    EXPECT_TRUE(ConfirmOverwrite(file, english));
    EXPECT_EQ(german.questions,
              std::vector<std::string>{"Wollen Sie die Datei \"" + name + "\" überschreiben?"});
    EXPECT_EQ(english.questions,
              std::vector<std::string>{"Do you really want to overwrite the midifile \"" + name});
}

} // namespace
} // namespace tracksmith::app
