#include <gtest/gtest.h>

#include "support/song_assert.h"
#include "support/temporary_folder.h"

#include "app/file_signature.h"
#include "app/load_sequence.h"
#include "app/refusal_texts.h"
#include "app/refusal_words.h"
#include "app/song_file.h"

namespace tracksmith::app {
namespace {

using namespace test;
using Kind = RefusalKind;

TrackBuilder Good() {
    return TrackBuilder().Note(0, 0, 60, 100).NoteOff(480, 0, 60).End();
}

Bytes Song(const TrackBuilder& second) {
    return MidiFileBuilder().Track(Good()).Track(second).Build();
}

Bytes Cut(Bytes file, std::size_t fromEnd) {
    file.resize(file.size() - fromEnd);
    return file;
}

// A file that begins with `start` and goes on with bytes that are no text.
Bytes Foreign(std::string_view start) {
    Bytes bytes = BytesOf(start);
    bytes.resize(6'000, 0x93);
    return bytes;
}

Bytes Joined(Bytes first, const Bytes& second) {
    Append(first, second);
    return first;
}

struct Refused {
    const char* name;
    Bytes file;
    Kind kind;
    std::uint32_t track;
    std::string german;
    bool loadable = false;
};

class RefusalTest : public testing::TestWithParam<Refused> {};

TEST_P(RefusalTest, IsToldInAPlainSentence) {
    const Refused& expected = GetParam();
    const TemporaryFolder folder;
    PutFile(folder / "some song.mid", expected.file);
    const RefusalAdvice advice = AdviseOnRefusedFile(folder / "some song.mid", {});
    EXPECT_EQ(RefusalKindName(advice.kind), RefusalKindName(expected.kind));
    EXPECT_EQ(advice.track, expected.track);
    EXPECT_EQ(advice.german, expected.german);
    EXPECT_NE(advice.english, "");
    EXPECT_NE(advice.english, advice.german);
    EXPECT_EQ(advice.fileName, "some song.mid");
    EXPECT_EQ(advice.loadableWithRunningStatusAcrossSysex, expected.loadable);

    // The advice agrees with what loading does.
    RecordingMessageHost host;
    session::Session session;
    EXPECT_THROW(OpenMidiFile(session, folder / "some song.mid", host), EMidiError);
    session.Options().runningStatusAcrossSysex = true;
    if (expected.loadable) {
        OpenMidiFile(session, folder / "some song.mid", host);
        EXPECT_TRUE(session.HasSong());
    }
}

const TrackBuilder kStatusAcross =
    TrackBuilder().Note(0, 0, 60, 1).Sysex(5, {0x7E, 0xF7}).Raw(0, {61, 1}).End();

INSTANTIATE_TEST_SUITE_P(
    Files, RefusalTest,
    testing::Values(
        Refused{"Empty", {}, Kind::Empty, 0, "Die Datei ist leer."},
        Refused{"Short", BytesOf("MThd"), Kind::TooShort, 0,
                "Die Datei hat nur 4 Bytes, das ist kein Song."},
        Refused{"Rmid", Foreign("RIFF1234RMIDdata"), Kind::OtherType, 0,
                "Die Datei ist kein Song, sondern ein Song in einer RIFF-Hülle (.rmi)."},
        Refused{"Wave", Foreign("RIFF1234WAVEfmt "), Kind::OtherType, 0,
                "Die Datei ist kein Song, sondern eine Tonaufnahme."},
        Refused{"MpegFrame", Foreign("\xFF\xFB\x90"), Kind::OtherType, 0,
                "Die Datei ist kein Song, sondern eine Tonaufnahme."},
        Refused{"Zip", Foreign("PK\x03\x04"), Kind::OtherType, 0,
                "Die Datei ist kein Song, sondern ein Archiv, das erst entpackt werden muss."},
        Refused{"Web", BytesOf("\xEF\xBB\xBF \n<html><body>not found</body></html>"),
                Kind::OtherType, 0, "Die Datei ist kein Song, sondern eine Web- oder XML-Seite."},
        Refused{"Text", BytesOf("this is no song, only text"), Kind::OtherType, 0,
                "Die Datei ist kein Song, sondern ein Text."},
        Refused{"Zeros", Bytes(500), Kind::OtherType, 0,
                "Die Datei ist kein Song, sondern eine Datei, die nur mit Nullen anfängt."},
        Refused{"Unknown", Foreign("\x01\x02"), Kind::OtherType, 0,
                "Die Datei ist kein Standard MIDI File."},
        Refused{"Before", Joined(Bytes(128, 1), Song(Good())), Kind::BytesBefore, 0,
                "Vor dem Song stehen 128 fremde Bytes."},
        Refused{"Header", Joined(BytesOf("MThd"), Bytes(40, 1)), Kind::DamagedHeader, 0,
                "Der Kopf der Datei ist beschädigt."},
        Refused{"NoTracks", MidiFileBuilder().Loose(Bytes(20)).Build(), Kind::NoTracks, 0,
                "Die Datei enthält keine Spuren."},
        Refused{"Missing", MidiFileBuilder().Track(Good()).Promise(3).Build(), Kind::TracksMissing,
                2, "Die Datei ist abgeschnitten: Sie müsste 3 Spuren haben und endet nach 1."},
        Refused{"Chunk", MidiFileBuilder().Track(Good()).Loose(Bytes(20, 'x')).Promise(2).Build(),
                Kind::NoTrackHere, 2, "Wo Spur 2 anfangen müsste (Byte 35), steht etwas anderes."},
        Refused{"CutInEvent", Cut(Song(Good()), 6), Kind::CutOff, 2,
                "Die Datei ist in Spur 2 abgeschnitten."},
        Refused{"CutInText", Cut(Song(TrackBuilder().Text(0, 1, "long enough").End()), 9),
                Kind::CutOff, 2, "Die Datei ist in Spur 2 abgeschnitten."},
        Refused{"LengthBeyond", Song(TrackBuilder().Raw(0, {0xFF, 0x01, 0x7F}).End()),
                Kind::DamagedTrack, 2,
                "Die Datei ist beschädigt: In Spur 2, Byte 47, kann eine Länge oder Zeit nicht "
                "stimmen."},
        Refused{"NoStatus", Song(TrackBuilder().Raw(0, {60, 64}).End()), Kind::DamagedTrack, 2,
                "Die Datei ist beschädigt: In Spur 2, Byte 44, steht ein Wert ohne Befehl."},
        Refused{"Across", Song(kStatusAcross), Kind::DamagedTrack, 2,
                "Die Datei ist beschädigt: In Spur 2, Byte 53, steht ein Wert ohne Befehl.", true},
        Refused{"AcrossAndCut", Cut(Song(kStatusAcross), 2), Kind::DamagedTrack, 2,
                "Die Datei ist beschädigt: In Spur 2, Byte 53, steht ein Wert ohne Befehl."},
        Refused{"Over127", Song(TrackBuilder().Note(0, 0, 200, 1).End()), Kind::DamagedTrack, 2,
                "Die Datei ist beschädigt: In Spur 2, Byte 45, steht ein Wert über 127."},
        Refused{"Command", Song(TrackBuilder().Raw(0, {0xF4}).End()), Kind::DamagedTrack, 2,
                "Die Datei ist beschädigt: In Spur 2, Byte 44, steht ein Befehl, den es in Dateien "
                "nicht gibt."},
        Refused{"EndOfTrack", Song(TrackBuilder().Meta(0, 0x2F, {1})), Kind::DamagedTrack, 2,
                "Die Datei ist beschädigt: In Spur 2, Byte 44, ist das Spurende fehlerhaft."}),
    [](const auto& refused) { return std::string(refused.param.name); });

TEST(FileSignature, KnowsSoundAndTextFromOtherBytes) {
    const auto type = [](const Bytes& start) { return OtherFileType(start); };
    for (const Bytes& frame : {Bytes{0xFF, 0xFB, 0x90}, {0xFF, 0xE3, 0x10}, {0xFF, 0xF6, 0xE0}}) {
        EXPECT_EQ(type(frame), &texts::kTypeSound) << Hex(frame);
    }
    for (const Bytes& text : {Bytes{0xFF, 0xFB},
                              {0xFE, 0xFB, 0x90},
                              {0xFF, 0xDB, 0x90},
                              {0xFF, 0xEB, 0x90},
                              {0xFF, 0xF9, 0x90},
                              {0xFF, 0xFB, 0xF0}}) {
        EXPECT_EQ(type(text), &texts::kTypeText) << Hex(text); // of some encoding
    }
    for (const char* text : {"plain ~", "tab\t\r\n", "RIF", "\xEF\xBB\xBF"}) {
        EXPECT_EQ(type(BytesOf(text)), &texts::kTypeText) << text;
    }
    EXPECT_EQ(type({'a', 0x7F}), nullptr);
    EXPECT_EQ(type({'a', 0x1F}), nullptr);
    EXPECT_EQ(type(BytesOf(" \t\r\n<x")), &texts::kTypeMarkup);
    EXPECT_EQ(type(BytesOf("RIFF12345678")), &texts::kTypeRiff);
    EXPECT_EQ(type(BytesOf("RIFF")), &texts::kTypeText);
    EXPECT_EQ(type({0, 0, 1}), nullptr);
    EXPECT_EQ(type({0, 0}), &texts::kTypeZeros);
}

TEST(Refusal, WhatTheSystemRefusesIsToldToo) {
    const TemporaryFolder folder;
    const auto missing = AdviseOnRefusedFile(folder / "missing.mid", {});
    EXPECT_EQ(missing.kind, Kind::Unreadable);
    EXPECT_EQ(missing.english, "There is no such file or folder.");
    EXPECT_EQ(AdviseOnRefusedFile(folder.Path(), {}).german, "Das ist ein Ordner.");
}

TEST(Refusal, ASongBeyondItsMemoryIsNoDamage) {
    song::DecodeOptions options;
    options.memoryBudget = 100;
    const RefusalAdvice advice = AdviseOnRefusedFile(Song(kStatusAcross), options, true);
    EXPECT_EQ(advice.kind, Kind::NotEnoughMemory);
    EXPECT_EQ(advice.english, "The song takes 1 MB of memory; at most 0 MB are allowed.");
    options.memoryBudget = 0;
    EXPECT_EQ(AdviseOnRefusedFile(Song(kStatusAcross), options, true).kind, Kind::None);
    options.memoryBudget = 100;
    EXPECT_FALSE(
        AdviseOnRefusedFile(Song(kStatusAcross), options).loadableWithRunningStatusAcrossSysex);
}

#ifndef _WIN32

TEST(Refusal, AHugeFileThatIsNoSongAnswersAtOnce) {
    const TemporaryFolder folder;
    const std::filesystem::path file = folder / "huge.mid";
    for (const char* start : {"RIFF", "MThd"}) {
        PutFile(file, Foreign(start));
        std::filesystem::resize_file(file, std::uint64_t{3} << 30);
        const auto advice = AdviseOnRefusedFile(file, {});
        EXPECT_EQ(advice.kind, *start == 'R' ? Kind::OtherType : Kind::TooLarge);
    }
    PutFile(file, Foreign("RIFF"));
    std::filesystem::resize_file(file, std::uint64_t{1} << 30);
    RecordingMessageHost host;
    session::Session session;
    EXPECT_EQ(ReadSongFile(file)->size(), kFileStartBytes);
    EXPECT_THROW(OpenMidiFile(session, file, host), EMidiError);
    EXPECT_EQ(host.messages, std::vector<std::string>{"Error in midi file header - 1!"});
}

#endif

} // namespace
} // namespace tracksmith::app
