#pragma once

#include <memory>

#include "base/text.h"
#include <QWidget>

#include "app/session/other_song.h"

class QLabel;
class QPushButton;

namespace tracksmith::forms {

class SessionSignals;

/// Plays and stops the song, shows its place, and switches between the song as it was before and as
/// it is now. When it goes, the song is heard as it is.
class ListeningRow : public QWidget {
    Q_OBJECT

public:
    /// `session` must outlive the row.
    ListeningRow(SessionSignals& session, Language language, QWidget* parent = nullptr);
    ~ListeningRow() override;

    /// The state that is heard as "before"; null for none. What is heard just now stays.
    void SetBefore(std::shared_ptr<session::OtherSong> before);

    /// The song is heard as it is.
    void End();
    void PlayStop();
    /// Before to after and back.
    void Switch();

private:
    void Hear(bool before);
    void ShowState();
    void ShowPlace();

    SessionSignals& session_;
    Language language_;
    std::shared_ptr<session::OtherSong> state_;
    QPushButton* play_;
    QLabel* place_;
    QPushButton* before_;
    QPushButton* after_;
};

} // namespace tracksmith::forms
