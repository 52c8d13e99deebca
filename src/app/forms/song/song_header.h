#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/text.h"
#include <QWidget>

#include "app/song_description.h"

class QAction;
class QPushButton;

namespace tracksmith::forms {

class ElidedLabel;
class Panel;
class ValueBox;

/// Song name and file name in one line, and facts about the file in another.
class SongHeader : public QWidget {
    Q_OBJECT

public:
    /// `health` opens what is wrong with the song and must outlive the widget.
    explicit SongHeader(QAction& health, QWidget* parent = nullptr);

    /// Shows the facts of a song; `fileName` is ready to show, with its mark when modified.
    void ShowSong(const app::SongDescription& song, const QString& fileName, Language language);

    /// The facts in a panel of their own, which stands elsewhere.
    Panel* Facts() const { return panel_; }

    /// Shows how many errors, warnings and hints the song has; none while they are counted.
    void ShowHealth(const std::optional<std::array<std::int64_t, 3>>& counts);

    void Retranslate(Language language);

private:
    QWidget* BuildNames();

    void ShowHealthText();

    QPushButton* health_;
    std::optional<std::array<std::int64_t, 3>> findings_;
    Language language_ = Language::English;
    ElidedLabel* title_;
    ElidedLabel* fileName_;
    ValueBox* format_;
    ValueBox* division_;
    ValueBox* tracks_;
    ValueBox* length_;
    std::vector<ValueBox*> facts_;
    Panel* panel_;
};

} // namespace tracksmith::forms
