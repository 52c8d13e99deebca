#pragma once

#include "base/text.h"
#include <QStatusBar>

#include "app/song_description.h"

class QLabel;

namespace tracksmith::forms {

class ElidedLabel;

/// The status bar: last message, facts of the song, modified mark.
class StatusLine : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusLine(QWidget* parent = nullptr);

    /// Shows `text`, followed by `detail` as it is.
    void ShowStatus(const Text& text, const QString& detail = {});

    /// Shows format, division and number of tracks; null while no song is open.
    void ShowSong(const app::SongDescription* song);

    /// Shows the instrument that songs are prepared for; empty for none.
    void SetInstrument(const QString& name);

    void SetModified(bool modified);
    void Retranslate(Language language);

private:
    void Render();

    Text text_;
    QString detail_;
    int format_ = 0;
    int division_ = 0;
    std::int64_t trackCount_ = -1;
    Language language_ = Language::English;
    ElidedLabel* message_;
    QLabel* instrument_;
    QLabel* facts_;
    QLabel* modified_;
};

} // namespace tracksmith::forms
