#pragma once

#include <vector>

#include "base/text.h"
#include <QWidget>

#include "app/forms/transport/transport_icons.h"

class QToolButton;

namespace tracksmith::forms {

class InstrumentBox;
class MainMenu;
class OutputBox;
class SessionSignals;
class PositionDisplay;
class TempoBox;

/// The line with which the song is played: transport buttons, position, instrument, tempo,
/// output.
class PlayBar : public QWidget {
    Q_OBJECT

public:
    /// The buttons do what the entries of `menu` do. Both must outlive the bar.
    PlayBar(MainMenu& menu, SessionSignals& session, QWidget* parent = nullptr);

    PositionDisplay& Position() const { return *position_; }
    InstrumentBox& Instrument() const { return *instrument_; }

    void Retranslate(Language language);

protected:
    void changeEvent(QEvent* event) override;

private:
    void AddButtons(QWidget& place);
    void ShowSigns();
    void ShowPlaying(bool playing);

    MainMenu& menu_;
    SessionSignals& session_;
    std::vector<QToolButton*> buttons_;
    PositionDisplay* position_;
    InstrumentBox* instrument_;
    TempoBox* tempo_;
    OutputBox* output_;
    Language language_ = Language::English;
};

} // namespace tracksmith::forms
