#pragma once

#include <vector>

#include "base/text.h"
#include <QWidget>

#include "app/song_description.h"

namespace tracksmith::forms {

class ElidedLabel;
class Panel;
class ValueBox;

/// Song name and file name in one line, and facts about the file in another.
class SongHeader : public QWidget {
    Q_OBJECT

public:
    explicit SongHeader(QWidget* parent = nullptr);

    /// Shows the facts of a song; `fileName` is ready to show, with its mark when modified.
    void ShowSong(const app::SongDescription& song, const QString& fileName, Language language);

    /// The facts in a panel of their own, which stands elsewhere.
    Panel* Facts() const { return panel_; }

    void Retranslate(Language language);

private:
    QWidget* BuildNames();

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
