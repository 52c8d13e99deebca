#include <cstdint>
#include <exception>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "base/errors.h"
#include "base/recording_message_host.h"

#include "app/backups/auto_backup.h"
#include "app/load_sequence.h"
#include "app/save_song.h"
#include "editing/range_tools.h"

// What tools/torture.py runs while calls fail or the program is killed:
//   edit_and_back_up SONG FOLDER SEMITONES
// moves the first measures, which takes a copy of the song for undoing, writes a backup into FOLDER
// beside saving the song in its place, and ends with 0 when all of it was done. Otherwise a message
// tells why, with 3 when the song was not read, 4 not edited or saved, 5 not backed up; 1 when the
// song in memory is not what it has to be.

using namespace tracksmith;

namespace {

constexpr int kWrong = 1;
constexpr int kUnreadable = 3;
constexpr int kNotSaved = 4;
constexpr int kNotBackedUp = 5;

/// One run.
class Run {
public:
    Run(std::string song, const std::string& folder, RecordingMessageHost& host)
        : song_(std::move(song)), host_(host), backup_(session_, folder, host) {}

    int Do(const std::string& semitones) {
        stage_ = kUnreadable;
        app::OpenMidiFile(session_, song_, host_);
        stage_ = kNotSaved;
        const std::vector<std::uint8_t> before = Coded();
        try {
            tools_.Transpose({editing::RangeTool::Transpose, {"1", "1"}, {"3", "1"}, {}},
                             {semitones, {}, "", {}, {}});
        } catch (const std::exception&) {
            if (Coded() != before) {
                host_.ShowMessage("the edit has failed and changed the song");
                stage_ = kWrong;
            }
            throw;
        }
        const bool begun = backup_.WriteNow();
        app::SaveMidiFile(session_, song_, app::SaveFormat::AsSong, host_);
        stage_ = kNotBackedUp;
        return backup_.Finish() && begun ? 0 : kNotBackedUp;
    }
    int Stage() const { return stage_; }

private:
    std::vector<std::uint8_t> Coded() {
        const auto bytes = app::EncodeSong(session_, app::SaveFormat::AsSong, host_);
        return {bytes.begin(), bytes.end()};
    }

    std::string song_;
    RecordingMessageHost& host_;
    session::Session session_;
    backups::AutoBackup backup_;
    editing::Undo undo_{session_};
    editing::RangeTools tools_{session_, undo_, host_};
    int stage_ = kUnreadable;
};

int Try(const std::vector<std::string>& words, RecordingMessageHost& host) {
    Run run(words.at(0), words.at(1), host);
    try {
        return run.Do(words.at(2));
    } catch (const EMidiError&) { // shown
    } catch (const std::exception& error) {
        host.ShowMessage(error.what());
    }
    return run.Stage();
}

} // namespace

int main(int argc, char** argv) {
    RecordingMessageHost host;
    int code = kUnreadable;
    try {
        code = Try(std::vector<std::string>(std::next(argv), std::next(argv, argc)), host);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
    }
    for (const std::string& message : host.messages) {
        std::cerr << message << '\n';
    }
    return code;
}
