#include "app/backups/auto_backup.h"

#include <gtest/gtest.h>

#include "base/errors.h"
#include "base/recording_message_host.h"
#include "support/midi_file_builder.h"
#include "support/scratch_settings.h"
#include "support/session_edit.h"

#include "app/backups/restore_backup.h"
#include "app/load_sequence.h"
#include "app/save_song.h"

namespace tracksmith::backups {
namespace {

using namespace std::chrono_literals;
using test::Bytes;

Bytes Waltz(int key) {
    return test::MidiFileBuilder()
        .Track(test::TrackBuilder().Tempo(0, 500'000).End(1920))
        .Track(test::TrackBuilder().Note(0, 2, key, 90).NoteOff(5, 2, key).End(960))
        .Build();
}

class AutoBackupTest : public testing::Test {
protected:
    void SetUp() override {
        test::PutFile(folder_ / "waltz.mid", Waltz(60));
        app::OpenMidiFile(session_, folder_ / "waltz.mid", host_);
    }
    void Modify() {
        test::EditSession(session_, [](session::Workspace& work) {
            work.song.tracks[1].first->next->data2 ^= 1;
        });
    }
    std::size_t Count() const { return backup_.Folder().List().backups.size(); }
    // The number of backups after a look at `minutes`.
    std::size_t LookAt(int minutes) {
        backup_.Look(AutoBackup::Time() + std::chrono::minutes(minutes));
        backup_.Finish();
        return Count();
    }

    test::TemporaryFolder folder_;
    RecordingMessageHost host_;
    session::Session session_;
    AutoBackup backup_{session_, folder_ / "AutoBackups", host_};
};

TEST_F(AutoBackupTest, WritesWhileTheSongIsModifiedAndHasChanged) {
    EXPECT_EQ(LookAt(0), 0U);
    EXPECT_EQ(LookAt(100), 0U); // not modified
    Modify();
    EXPECT_EQ(LookAt(101), 0U);
    EXPECT_EQ(LookAt(105), 0U);
    EXPECT_EQ(LookAt(106), 1U);
    EXPECT_EQ(LookAt(120), 1U); // as written already
    Modify();
    EXPECT_EQ(LookAt(121), 1U);
    EXPECT_EQ(LookAt(125), 2U);
    backup_.Options() = {false, 1min};
    Modify();
    EXPECT_EQ(LookAt(200), 2U);
    EXPECT_EQ(LookAt(300), 2U);
    backup_.Options() = {true, 1min};
    EXPECT_EQ(LookAt(400), 2U);
    EXPECT_EQ(LookAt(401), 3U);
    const Backup newest = backup_.Folder().List().backups.front();
    EXPECT_EQ(newest.name.song, "waltz");
    EXPECT_EQ(newest.original, folder_ / "waltz.mid");
    const auto bytes = app::EncodeSong(session_, app::SaveFormat::AsSong, host_);
    EXPECT_EQ(test::FileBytes(newest.file), Bytes(bytes.begin(), bytes.end()));
    EXPECT_TRUE(host_.messages.empty());
}

TEST_F(AutoBackupTest, NeverInTheMiddleOfAnEdit) {
    Modify();
    LookAt(0);
    test::EditSession(session_, [&](session::Workspace&) {
        EXPECT_EQ(LookAt(10), 0U);
        EXPECT_FALSE(backup_.WriteNow());
    });
    EXPECT_EQ(LookAt(11), 1U);
}

TEST_F(AutoBackupTest, WritesBeforeAnotherSongReplacesAModifiedOne) {
    app::OpenMidiFile(session_, folder_ / "waltz.mid", host_);
    EXPECT_EQ(Count(), 0U);
    Modify();
    const auto before = app::EncodeSong(session_, app::SaveFormat::AsSong, host_);
    const Bytes modified(before.begin(), before.end());
    app::NewSong(session_, host_);
    EXPECT_TRUE(backup_.Finish());
    ASSERT_EQ(Count(), 1U);
    EXPECT_EQ(test::FileBytes(backup_.Folder().List().backups[0].file), modified);
}

TEST_F(AutoBackupTest, AFailureIsSaidOnceUntilABackupSucceeds) {
    test::PutFile(folder_ / "AutoBackups", Bytes(1));
    for (int i = 0; i < 3; ++i) {
        Modify();
        backup_.WriteNow();
        EXPECT_FALSE(backup_.Finish());
    }
    EXPECT_EQ(host_.messages.size(), 1U);
    EXPECT_EQ(host_.messages[0].rfind("The song could not be backed up.", 0), 0U);
    std::filesystem::remove(folder_ / "AutoBackups");
    EXPECT_TRUE(backup_.WriteNow()); // though the song is the same
    EXPECT_TRUE(backup_.Finish());
    EXPECT_EQ(Count(), 1U);
    std::filesystem::remove_all(folder_ / "AutoBackups");
    test::PutFile(folder_ / "AutoBackups", Bytes(1));
    Modify();
    backup_.WriteNow();
    EXPECT_FALSE(backup_.Finish());
    EXPECT_EQ(host_.messages.size(), 2U);
}

TEST_F(AutoBackupTest, ASongThatCannotBeCodedAndAUserWithoutFolderAreTold) {
    AutoBackup nowhere(session_, {}, host_);
    EXPECT_FALSE(nowhere.WriteNow());
    test::EditSession(session_,
                      [](session::Workspace& work) { work.song.tracks[1].first->next->kind = 7; });
    EXPECT_FALSE(backup_.WriteNow());
    EXPECT_EQ(host_.messages.size(), 2U);
    EXPECT_EQ(Count(), 0U);
}

TEST_F(AutoBackupTest, RestoresTheSongAsItWasWithoutTouchingItsFile) {
    session_.Options().noteLength = {};
    app::OpenMidiFile(session_, folder_ / "waltz.mid", host_);
    Modify();
    ASSERT_TRUE(backup_.WriteNow() && backup_.Finish());
    const Backup backup = backup_.Folder().List().backups.front();
    session_.Options().noteLength = {20, false};
    session_.Options().sysexOptions.automatic = true;
    app::NewSong(session_, host_);
    RestoreBackup(session_, backup, host_);
    EXPECT_TRUE(session_.Modified());
    EXPECT_EQ(session_.Work().file.name, folder_ / "waltz.mid");
    const auto bytes = app::EncodeSong(session_, app::SaveFormat::AsSong, host_);
    EXPECT_EQ(test::FileBytes(backup.file), Bytes(bytes.begin(), bytes.end()));
    EXPECT_EQ(test::FileBytes(folder_ / "waltz.mid"), Waltz(60));
    EXPECT_EQ(session_.Options().noteLength.minimum, 20);
    EXPECT_TRUE(session_.Options().sysexOptions.automatic);
    std::filesystem::remove(backup.file);
    EXPECT_THROW(RestoreBackup(session_, backup, host_), EMidiError);
    EXPECT_TRUE(session_.HasSong());
}

TEST_F(AutoBackupTest, OffersOnlyWhatWasWrittenSinceTheLastProperEnd) {
    test::ScratchSettings settings;
    const auto unseen = [&] {
        return UnseenBackup(settings.Store(), backup_.Folder()).has_value();
    };
    EXPECT_FALSE(unseen());
    Modify();
    ASSERT_TRUE(backup_.WriteNow() && backup_.Finish());
    const Backup first = backup_.Folder().List().backups.front();
    std::filesystem::last_write_time(folder_ / "waltz.mid", first.written - 1h);
    EXPECT_TRUE(unseen());
    std::filesystem::last_write_time(folder_ / "waltz.mid", first.written + 1h);
    EXPECT_FALSE(unseen()); // saved afterwards
    std::filesystem::remove(folder_ / "waltz.mid");
    EXPECT_TRUE(unseen());
    EXPECT_TRUE(MarkBackupsSeen(settings.Store(), backup_.Folder()));
    EXPECT_FALSE(unseen());
    Modify();
    ASSERT_TRUE(backup_.WriteNow() && backup_.Finish());
    EXPECT_TRUE(unseen());
    std::filesystem::remove(backup_.Folder().List().backups.front().file);
    EXPECT_FALSE(unseen());
}

TEST(BackupSettingsTest, AreKeptWithinTheirRange) {
    test::ScratchSettings settings;
    EXPECT_EQ(ReadBackupOptions(settings.Store()).interval, 5min);
    EXPECT_TRUE(ReadBackupOptions(settings.Store()).on);
    EXPECT_TRUE(WriteBackupOptions(settings.Store(), {false, 10min}));
    EXPECT_EQ(ReadBackupOptions(settings.Store()).interval, 10min);
    EXPECT_FALSE(ReadBackupOptions(settings.Store()).on);
    settings.Store().WriteIntToUserRegistry("AutoBackupMinutes", -4);
    EXPECT_EQ(ReadBackupOptions(settings.Store()).interval, 1min);
}

} // namespace
} // namespace tracksmith::backups
