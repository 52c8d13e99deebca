#pragma once

#include <QObject>
#include <QTimer>

#include "app/session/session.h"

namespace tracksmith::forms {

/// What the session tells, as signals for widgets, and the two clocks that the window gives it: one
/// for the running display, one for the look at the ports. User-interface thread.
class SessionSignals : public QObject, private session::SessionListener {
    Q_OBJECT

public:
    /// `session` must outlive the object and have its player.
    explicit SessionSignals(session::Session& session, QObject* parent = nullptr);
    ~SessionSignals() override;

    const session::Session& Session() const { return session_; }
    session::Transport& Controls() const { return session_.Controls(); }

    /// Controls to be connected to the signals of widgets.
    void MoveToTick(std::int32_t tick) { Controls().MoveToTick(tick); }
    void SetLoop(std::int32_t startTick, std::int32_t endTick) {
        Controls().SetLoop(startTick, endTick);
    }

signals:
    /// The song was changed or replaced.
    void SongChanged(bool replaced);
    void FileStateChanged();
    void PlayingChanged(bool playing);
    /// The place in the song has moved.
    void PlaceChanged();
    void LoopChanged();
    void TempoChanged();
    /// A channel goes to another output.
    void RoutesChanged();
    /// An output or its state has changed.
    void PortsChanged();
    /// Another song is heard in place of the one in memory, or that one again.
    void HeardSongChanged();
    /// The song was to be changed while another one is heard.
    void ChangeRefused();
    /// The regular look at the ports is over; twice a second.
    void PortsChecked();

private:
    void OnSongChanged(const session::ChangeKind& kind) override;
    void OnFileState() override { emit FileStateChanged(); }
    void OnPlaying(bool playing) override;
    void OnPlace() override { emit PlaceChanged(); }
    void OnLoop() override { emit LoopChanged(); }
    void OnTempo() override { emit TempoChanged(); }
    void OnRoutes() override { emit RoutesChanged(); }
    void OnPorts() override { emit PortsChanged(); }
    void OnHeardSong() override { emit HeardSongChanged(); }
    void OnChangeRefused() override { emit ChangeRefused(); }

    session::Session& session_;
    QTimer display_;
    QTimer portCheck_;
};

} // namespace tracksmith::forms
