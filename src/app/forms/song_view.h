#pragma once

#include "base/text.h"
#include <QWidget>

#include "app/song_description.h"
#include "app/workspace.h"

namespace tracksmith::forms {

class ChannelCards;
class ListPanel;
class OverviewWidget;
class SongHeader;

/// Everything that the window shows of a song, built anew from the workspace by ShowSong.
class SongView : public QWidget {
    Q_OBJECT

public:
    /// `workspace` must outlive the view.
    explicit SongView(const app::Workspace& workspace, QWidget* parent = nullptr);

    /// Shows the workspace's song, which must have a time map, from its start. `fileName` is what
    /// is shown as the file's name.
    void ShowSong(const QString& fileName);

    /// Shows another file name or modified mark.
    void ShowFileName(const QString& fileName);

    const app::SongDescription& Description() const { return description_; }

    void Retranslate(Language language);

private:
    void ShowLists();
    void ShowCursor();

    const app::Workspace& workspace_;
    app::SongDescription description_;
    QString fileName_;
    Language language_ = Language::English;
    SongHeader* header_;
    OverviewWidget* overview_;
    ChannelCards* cards_;
    ListPanel* tracks_;
    ListPanel* tempos_;
    ListPanel* metres_;
};

} // namespace tracksmith::forms
