#pragma once

#include "base/text.h"
#include <QStatusBar>

#include "app/song_description.h"

class QLabel;
class QProgressBar;
class QToolButton;

namespace tracksmith::forms {

class ElidedLabel;

/// The status bar: last message or what is being loaded, facts of the song, modified mark.
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

    /// A file that is being loaded.
    struct Loading {
        QString name;
        /// How far it is; -1 while that is not known.
        int percent = -1;
        bool mayCancel = false;
    };
    /// Shows in place of the last message that a file is being loaded.
    void ShowLoading(const Loading& loading);
    /// Nothing is being loaded any more: the last message comes out again.
    void EndLoading();

    void Retranslate(Language language);

signals:
    /// The button, or Escape while it is there.
    void CancelPressed();

private:
    void BuildLoading();
    void Render();
    void RenderLoading();

    Text text_;
    QString detail_;
    int format_ = 0;
    int division_ = 0;
    std::int64_t trackCount_ = -1;
    Language language_ = Language::English;
    Loading loading_;
    ElidedLabel* message_;
    QProgressBar* progress_ = nullptr;
    QToolButton* cancel_ = nullptr;
    QLabel* instrument_;
    QLabel* facts_;
    QLabel* modified_;
};

} // namespace tracksmith::forms
