#pragma once

#include <functional>
#include <vector>

#include "base/text.h"
#include <QWidget>

#include "editing/seam_picture.h"
#include "song/time_map_record.h"

namespace tracksmith::forms {

/// The notes of the two measures around a seam, a row for each channel: those that the tool ends
/// have a bar at their end, those that it begins again an arrow at their beginning.
class SeamView : public QWidget {
    Q_OBJECT

public:
    /// What a channel (0-15) is called.
    using ChannelName = std::function<QString(std::size_t)>;

    SeamView(ChannelName nameOf, QWidget* parent);

    /// Shows a seam of a song with the time map `map`; `note` stands behind the measure's number.
    void ShowSeam(editing::SeamPicture picture, const song::TimeMap& map, const QString& note,
                  const QColor& colour);
    void Clear();
    /// The place of the music in ticks of the changed song; less than 0 for none.
    void ShowPlace(std::int32_t tick);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Row {
        int channel = 0;
        QString name;
        std::size_t firstNote = 0;
        std::size_t notes = 0;
    };

    QRectF Area() const;
    double X(std::int32_t tick) const;
    void PaintRow(QPainter& painter, const Row& row, const QRectF& area) const;
    void PaintNote(QPainter& painter, const editing::SeamNote& note, const QRectF& area) const;
    void PaintRuler(QPainter& painter) const;

    ChannelName nameOf_;
    editing::SeamPicture picture_;
    std::vector<Row> rows_;
    std::vector<std::int32_t> beats_;
    QString before_;
    QString at_;
    QColor colour_;
    std::int32_t place_ = -1;
};

} // namespace tracksmith::forms
