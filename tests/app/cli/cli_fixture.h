#pragma once

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "base/system/file_io.h"
#include "support/midi_file_builder.h"
#include "support/temporary_folder.h"

#include "app/cli/cli_app.h"

namespace tracksmith::cli {

/// Runs the command line in a folder of its own and keeps what it said.
class CliTest : public testing::Test {
protected:
    int Run(const std::vector<std::string>& arguments, const std::string& input = {}) {
        std::istringstream in(input);
        std::ostringstream out;
        std::ostringstream log;
        const int code = RunCli(
            arguments, {in, out, log, "1.2.3", language_, terminal_, openDevices_, settings_});
        out_ = out.str();
        log_ = log.str();
        return code;
    }

    /// Path of `name` in the test's folder as an argument.
    std::string At(const std::string& name) const {
        return system::PathText((folder_ / name).make_preferred());
    }

    void Put(const std::string& name, const test::Bytes& bytes) const {
        std::filesystem::create_directories((folder_ / name).parent_path());
        test::PutFile(folder_ / name, bytes);
    }

    test::Bytes Get(const std::string& name) const { return test::FileBytes(folder_ / name); }

    bool Exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

    bool Says(const std::string& text) const { return log_.find(text) != std::string::npos; }

    bool Shows(const std::string& text) const { return out_.find(text) != std::string::npos; }

    test::TemporaryFolder folder_;
    Language language_ = Language::English;
    bool terminal_ = false;
    OpenDevices openDevices_ = &OpenSystemDevices;
    std::filesystem::path settings_;
    std::string out_;
    std::string log_;
};

/// A song of format 0: two channels, the first with a bank and a program, one note each.
inline test::Bytes Format0Song() {
    return test::MidiFileBuilder(0)
        .Track(test::TrackBuilder()
                   .Text(0, 0x03, "Little Song")
                   .Tempo(0, 500'000)
                   .TimeSignature(0, 3, 2)
                   .Short(0, 0xB0, 0, 8)
                   .Short(0, 0xB0, 32, 1)
                   .Program(0, 0, 24)
                   .Note(0, 0, 60, 100)
                   .Note(0, 9, 36, 100)
                   .NoteOff(480, 0, 60)
                   .Note(0, 9, 36, 0)
                   .Text(0, 0x05, "la")
                   .Sysex(0, {0x7E, 0x7F, 0x09, 0x01, 0xF7})
                   .Tempo(480, 400'000)
                   .Short(480, 0xB0, 7, 100)
                   .End(10))
        .Build();
}

/// A song of format 1 with a conductor track and one other.
inline test::Bytes Format1Song() {
    return test::MidiFileBuilder(1)
        .Track(test::TrackBuilder().Tempo(0, 500'000).End(1920))
        .Track(test::TrackBuilder().Note(0, 2, 60, 90).NoteOff(960, 2, 60).End(960))
        .Build();
}

inline test::Bytes BrokenSong() {
    return test::BytesOf("this is no song, only text of enough length");
}

} // namespace tracksmith::cli
