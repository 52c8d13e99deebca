#pragma once

#include "base/text.h"
#include <QWidget>

#include "app/session/workspace.h"
#include "app/song_description.h"

class QTabWidget;

namespace tracksmith::forms {

class ChannelCards;
class ListPanel;
class MainMenu;
class OverviewWidget;
class PlayBar;
class SessionSignals;
class RoutingPage;
class SongHeader;
class VoiceNames;

/// Everything that the window shows of a song, built anew from the workspace by ShowSong.
class SongView : public QWidget {
    Q_OBJECT

public:
    /// All of them must outlive the view.
    SongView(const session::Workspace& workspace, const VoiceNames& voices, MainMenu& menu,
             SessionSignals& session, QWidget* parent = nullptr);

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

    /// Turns to the next page: song, routing.
    void ShowNextPage();

    /// The channel (0-15) brought out, the first while none is.
    std::size_t ChosenChannel() const;

    const app::SongDescription& Description() const { return description_; }

    void Retranslate(Language language);

private:
    QWidget* BuildSong();
    QWidget* BuildSongPage();
    void Connect();
    void ShowLists();
    void ShowCards();
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
    ChannelCards* cards_;
    ListPanel* tracks_;
    ListPanel* tempos_;
    ListPanel* timeSignatures_;
    RoutingPage* routing_;
    QTabWidget* pages_;
};

} // namespace tracksmith::forms
