#pragma once

#include <array>
#include <functional>
#include <vector>

#include "base/text.h"
#include <QAbstractButton>

#include "app/forms/song/shown_voice.h"
#include "app/song_description.h"

namespace tracksmith::forms {

/// One channel: its number in its colour, voice, notes, bank and program. Pressing it brings the
/// channel out or takes that back.
class ChannelCard : public QAbstractButton {
    Q_OBJECT

public:
    /// `channel` counts from 0.
    explicit ChannelCard(int channel, QWidget* parent = nullptr);

    /// Shows a channel's line and the name of its voice; null when the song does not use the
    /// channel.
    void ShowLine(const app::SongDescription::ChannelLine* line, const ShownVoice& voice,
                  Language language);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Field {
        QString caption;
        QString value;
    };

    void PaintHead(QPainter& painter, const QRectF& inside) const;
    void PaintVoice(QPainter& painter, const QRectF& place) const;
    void PaintField(QPainter& painter, const QRectF& place, const Field& field) const;

    int channel_;
    QString voice_;
    std::array<Field, 2> fields_;
};

/// The cards of all sixteen channels in a row. One stop for the Tab key; the arrow keys move
/// between the cards.
class ChannelCards : public QWidget {
    Q_OBJECT

public:
    explicit ChannelCards(QWidget* parent = nullptr);

    /// Names the voice of a channel.
    using VoiceName = std::function<ShownVoice(const app::SongDescription::ChannelLine&)>;

    void ShowChannels(const std::vector<app::SongDescription::ChannelLine>& lines,
                      const VoiceName& voiceName, Language language);

    /// The channel (0-15) brought out, -1 for none.
    int ChosenChannel() const;

    /// Brings no channel out.
    void ClearChoice() { Choose(0, false); }

signals:
    /// The channel (0-15) brought out, -1 for none.
    void ChannelChosen(int channel);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Choose(int channel, bool on);
    bool FocusNext(int from, int step);
    void SetTabStop(int channel);

    std::array<ChannelCard*, 16> cards_{};
};

} // namespace tracksmith::forms
