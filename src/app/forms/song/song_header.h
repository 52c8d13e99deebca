#pragma once

#include <vector>

#include "base/text.h"
#include <QWidget>

#include "app/song_description.h"

namespace tracksmith::forms {

class ElidedLabel;
class ValueBox;

/// Song name, file name and facts about the file in one line.
class SongHeader : public QWidget {
    Q_OBJECT

public:
    explicit SongHeader(QWidget* parent = nullptr);

    /// Shows the facts of a song; `fileName` is ready to show, with its mark when modified.
    void ShowSong(const app::SongDescription& song, const QString& fileName, Language language);

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
};

} // namespace tracksmith::forms
