#pragma once

#include <QAbstractButton>

#include "mixer/forms/shown_voice.h"

namespace tracksmith::forms {

/// The voice of a channel in two lines; pressing it chooses another one.
class VoiceButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit VoiceButton(QWidget* parent);

    /// `text` is shown in place of a voice that has no name.
    void ShowVoice(const ShownVoice& voice, const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ShownVoice voice_;
};

} // namespace tracksmith::forms
