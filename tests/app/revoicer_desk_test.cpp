#include "app/revoicer_desk.h"

#include <gtest/gtest.h>
#include <memory>

#include "base/recording_message_host.h"
#include "support/scratch_settings.h"
#include "support/song_assert.h"

#include "app/load_sequence.h"
#include "instruments/catalogue.h"

namespace tracksmith::app {
namespace {

using namespace test;

/// A guitar with its bank on `channel`, behind it another program that shares the bank.
TrackBuilder GuitarTrack(std::uint8_t channel, std::uint8_t second) {
    const auto control = static_cast<std::uint8_t>(0xB0 | channel);
    return TrackBuilder()
        .Short(0, control, 0, 0)
        .Short(0, control, 32, 0)
        .Program(0, channel, 24)
        .Note(480, channel, 60, 90)
        .NoteOff(480, channel, 60)
        .Program(0, channel, second)
        .Note(0, channel, 60, 90)
        .NoteOff(480, channel, 60)
        .End();
}

/// A guitar on channels 3 and 4, twice on the first, a piano, and drums.
Bytes Band() {
    return MidiFileBuilder()
        .Track(TrackBuilder().Tempo(0, 500'000).End())
        .Track(GuitarTrack(2, 24))
        .Track(GuitarTrack(3, 0))
        .Track(TrackBuilder().Program(0, 9, 8).Note(480, 9, 36, 90).NoteOff(9, 9, 36).End())
        .Build();
}

class RevoicerDeskTest : public testing::Test {
protected:
    void SetUp() override {
        session_.Options().outputs.outputs.front().SetName("Yamaha Genos");
        OpenMidiData(session_, Band(), "band.mid", host_);
        desk_ = std::make_unique<RevoicerDesk>(session_, tables_, settings_.Store(), Options);
    }
    static instruments::LookupOptions Options(instruments::InstrumentId) { return {}; }
    static std::string Numbers(const instruments::VoiceNumbers& numbers) {
        return std::to_string(numbers.msb) + "/" + std::to_string(numbers.lsb) + "/" +
               std::to_string(numbers.program);
    }
    /// "numbers name xtimes channels line -> target" of every row.
    static std::string Text(const std::vector<RevoicerDesk::Row>& rows) {
        std::string text;
        for (const RevoicerDesk::Row& row : rows) {
            text += (row.source.isKit ? "kit " : "") + Numbers(row.source.numbers) + " " +
                    row.source.name + " x" + std::to_string(row.programChanges) + " on";
            for (const std::size_t channel : row.source.channels) {
                text += " " + std::to_string(channel + 1);
            }
            if (row.line) {
                text += " [" + std::to_string(*row.line) + (row.ticked ? "x" : "") + "] -> " +
                        Numbers(row.target) + " " + row.targetName;
            }
            text += "; ";
        }
        return text;
    }

    instruments::VoiceTables tables_{
        {std::filesystem::path(TRACKSMITH_SOURCE_DIR) / "data" / "voices"}};
    ScratchSettings settings_;
    RecordingMessageHost host_;
    session::Session session_;
    std::unique_ptr<RevoicerDesk> desk_;
};

TEST_F(RevoicerDeskTest, ShowsTheVoicesOfTheSongBesideTheTable) {
    const char* const before =
        "0/0/0 Grand Piano x1 on 4; 0/0/24 Nylon Guitar x3 on 3 4; "
        "kit 127/0/8 Room Kit x1 on 10; ";
    EXPECT_EQ(Text(desk_->ThisSong()), before);
    EXPECT_EQ(desk_->TableSize(), 0U);
    const VoiceInSong guitar = desk_->ThisSong()[1].source;
    const auto suggested = desk_->Suggestions(guitar, 2);
    ASSERT_EQ(suggested.size(), 2U);
    EXPECT_EQ(suggested[0].voice->name, "NylonGuitar SW (S.Art!)");
    EXPECT_EQ(desk_->NearnessOf(guitar, suggested[0].voice->Numbers()), suggested[0].nearness);
    EXPECT_TRUE(desk_->Put(guitar, *suggested[0].voice));
    const char* const put =
        "0/0/0 Grand Piano x1 on 4; 0/0/24 Nylon Guitar x3 on 3 4 [0x] -> "
        "8/34/0 NylonGuitar SW (S.Art!); kit 127/0/8 Room Kit x1 on 10; ";
    EXPECT_EQ(Text(desk_->ThisSong()), put);
    EXPECT_EQ(desk_->Plan().changes.size(), 2U);
    EXPECT_EQ(desk_->Plan().sharingBank, 2U); // each channel's second one
    EXPECT_EQ(Numbers(desk_->NewVoiceAt(2, 0).value()), "8/34/0");
    EXPECT_EQ(desk_->NewVoiceAt(3, 960), std::nullopt); // the piano
    const RevoicerDesk again(session_, tables_, settings_.Store(), Options);
    EXPECT_EQ(Text(again.ThisSong()), put); // stored at once
    EXPECT_TRUE(desk_->Tick(0, false));
    EXPECT_FALSE(desk_->ThisSong()[1].ticked);
    EXPECT_TRUE(desk_->Plan().changes.empty());
    EXPECT_TRUE(desk_->Delete(0));
    EXPECT_EQ(Text(desk_->ThisSong()), before);
}

TEST_F(RevoicerDeskTest, TablesComeAndGoAsText) {
    bool stored = false;
    EXPECT_EQ(desk_->Import("8\t34\t0\tNew\t0\t0\t24\tNylon\nnonsense\n", stored), 2U);
    EXPECT_EQ(desk_->TableSize(), 0U);
    EXPECT_EQ(desk_->Import("1\t2\t3\tOrgan\t9\t9\t9\tGone\n"
                            "8\t34\t0\tNew\t0\t0\t24\tNylon\n",
                            stored),
              std::nullopt);
    EXPECT_TRUE(stored);
    EXPECT_EQ(Text(desk_->WholeTable()),
              "9/9/9 Gone x0 on [0x] -> 1/2/3 Organ; "
              "0/0/24 Nylon Guitar x3 on 3 4 [1x] -> 8/34/0 New; ");
    EXPECT_NE(desk_->ExportText().find("8\t34\t0\tNew\t0\t0\t24\tNylon"), std::string::npos);
    EXPECT_EQ(desk_->SuggestMissing(), 1U); // the kit is one of its own
    EXPECT_TRUE(desk_->Save());
    EXPECT_EQ(desk_->TableSize(), 3U);
    EXPECT_EQ(desk_->AddBanks(host_), 3U);
    desk_->Refresh();
    EXPECT_EQ(desk_->Apply(host_).changes.size(), 4U);
    EXPECT_TRUE(session_.Modified());
}

// Without a table of its own there is nothing to suggest; the tables of two instruments are two.
TEST_F(RevoicerDeskTest, FollowsTheInstrument) {
    EXPECT_TRUE(desk_->CanSuggest());
    desk_->SuggestMissing();
    EXPECT_TRUE(desk_->Save());
    session_.Options().outputs.outputs.front().SetName("Korg i30");
    desk_->Refresh();
    EXPECT_EQ(desk_->InstrumentName(), "Korg i30");
    EXPECT_FALSE(desk_->CanSuggest());
    EXPECT_EQ(desk_->TableSize(), 0U);
}

TEST_F(RevoicerDeskTest, APickerServesItsChannel) {
    const SongDescription song = DescribeSong(session_.Work());
    const auto task = PickerTaskOf(session_.Work(), tables_, song, Options, 3);
    EXPECT_FALSE(task.drums);
    EXPECT_EQ(Numbers(task.inForce), "0/0/0");
    std::string inSong;
    for (const auto& [channel, voice] : task.inSong) {
        inSong +=
            std::to_string(channel) + (voice.isKit ? " kit " : " ") + Numbers(voice.numbers) + "; ";
    }
    EXPECT_EQ(inSong, "2 0/0/24; 3 0/0/24; 9 kit 127/0/8; ");
    EXPECT_EQ(PlacesOf(task, session_.Song()),
              (std::vector<std::string>{"001.01.000", "001.03.000"}));
    const auto drums = PickerTaskOf(session_.Work(), tables_, song, Options, 9);
    EXPECT_TRUE(drums.drums);
    EXPECT_EQ(Numbers(drums.inForce), "127/0/0");
    EXPECT_FALSE(PickerTaskOf(session_.Work(), tables_, song, Options, 8).drums);
}

} // namespace
} // namespace tracksmith::app
