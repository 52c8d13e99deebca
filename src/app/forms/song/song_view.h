#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "base/display_text.h"
#include "base/text.h"
#include <QWidget>

#include "app/session/workspace.h"
#include "app/song_description.h"
#include "mixer/forms/shown_voice.h"
#include "mixer/mixer.h"

class QStackedWidget;
class QTabBar;

namespace tracksmith::forms {

class ListPanel;
class LyricsBand;
class LyricsModel;
class MainMenu;
class OverviewWidget;
class PlayBar;
class SessionSignals;
class RoutingPage;
class SongHeader;
class StripsView;
class VoiceNames;

/// Everything that the window shows of a song, built anew from the workspace by ShowSong.
class SongView : public QWidget {
    Q_OBJECT

public:
    /// All of them must outlive the view.
    SongView(const session::Workspace& workspace, const VoiceNames& voices, MainMenu& menu,
             SessionSignals& session, mixer::Mixer& mixer, QWidget* parent = nullptr);

    /// Shows the workspace's song, which must have a time map, from its start. `fileName` is what
    /// is shown as the file's name.
    void ShowSong(const QString& fileName);

    /// Shows the instrument of the first output, empty for none, and the voices by their names on
    /// the instruments.
    void ShowInstrument(const std::string& name);

    /// Gives the keyboard to the overview, where Space plays and the arrow keys move.
    void FocusOverview();

    /// Shows another file name or modified mark.
    void ShowFileName(const QString& fileName);

    /// Shows how many errors, warnings and hints the song has; none while they are counted.
    void ShowHealth(const std::optional<std::array<std::int64_t, 3>>& counts);

    /// The song's words and chords and what is current of them.
    LyricsModel& Lyrics() const { return *lyrics_; }
    /// Reads the words in another encoding, from the next ShowSong on, too; in the likeliest one
    /// for none.
    void SetLyricsEncoding(std::optional<TextEncoding> encoding);

    /// Turns to the next page: mixer, sound controllers, routing, lists.
    void ShowNextPage();

    /// What a channel (0-15) plays at the place of the music.
    ShownVoice VoiceOf(int channel) const;

    /// Shows the mixer after something else than the strips has moved it.
    void ShowMixer();

    /// The channel (0-15) whose strip is worked on.
    std::size_t ChosenChannel() const;

    const app::SongDescription& Description() const { return description_; }

    void Retranslate(Language language);

signals:
    /// The voice of a channel (0-15) is to be chosen.
    void VoicePressed(int channel);
    /// A controller is to be put in front of a channel's first note.
    void InsertWanted(int channel, mixer::Control control);
    /// The song cannot be changed now, since a port hangs.
    void Refused();

private:
    QWidget* BuildSong();
    QWidget* BuildLists();
    void Connect();
    void ShowPage(int page);
    app::SongDescription::ChannelLine InForce(app::SongDescription::ChannelLine line) const;
    void FollowVoices();
    void ShowVoices();
    void ShowLists();
    void ShowPlace();
    void ShowLoop();

    const session::Workspace& workspace_;
    const VoiceNames& voices_;
    SessionSignals& session_;
    app::SongDescription description_;
    QString fileName_;
    Language language_ = Language::English;
    PlayBar* playBar_;
    SongHeader* header_;
    OverviewWidget* overview_;
    LyricsModel* lyrics_;
    LyricsBand* band_;
    std::optional<TextEncoding> lyricsEncoding_;
    mixer::Mixer& mixer_;
    StripsView* strips_;
    /// What the strips name, by channel: programs with their banks.
    std::array<std::uint32_t, song::kMidiChannels> shownVoices_{};
    ListPanel* tracks_;
    ListPanel* tempos_;
    ListPanel* timeSignatures_;
    RoutingPage* routing_;
    QTabBar* pages_;
    QStackedWidget* shown_;
};

} // namespace tracksmith::forms
