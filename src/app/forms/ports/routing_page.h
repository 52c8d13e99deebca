#pragma once

#include <array>

#include "base/text.h"
#include <QWidget>

class QComboBox;
class QLabel;
class QPushButton;
class QSpinBox;

namespace tracksmith::forms {

class SessionSignals;

/// The page on which each channel of the song gets its output and target channel.
class RoutingPage : public QWidget {
    Q_OBJECT

public:
    explicit RoutingPage(SessionSignals& session, QWidget* parent = nullptr);

    void Retranslate(Language language);

private:
    static constexpr int kChannels = 16;

    struct Line {
        QLabel* number = nullptr;
        QComboBox* output = nullptr;
        QSpinBox* target = nullptr;
    };
    Line NewLine(int channel);
    void ShowRoutes();
    void TakeRoute(int channel);

    SessionSignals& session_;
    Language language_ = Language::English;
    std::array<Line, kChannels> lines_;
    QPushButton* reset_;
};

} // namespace tracksmith::forms
