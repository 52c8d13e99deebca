#include "app/forms/transport/play_bar.h"

#include <array>

#include "base/forms/flow_layout.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QEvent>
#include <QHBoxLayout>
#include <QToolButton>

#include "app/forms/menu/command_ids.h"
#include "app/forms/menu/main_menu.h"
#include "app/forms/ports/output_box.h"
#include "app/forms/song/instrument_box.h"
#include "app/forms/texts.h"
#include "app/forms/transport/position_display.h"
#include "app/forms/transport/session_signals.h"
#include "app/forms/transport/tempo_box.h"

namespace tracksmith::forms {
namespace {

struct ButtonSpec {
    std::string_view command;
    TransportSign sign;
    const char* objectName;
};

constexpr auto kButtons = std::to_array<ButtonSpec>({
    {commands::kMoveToStart, TransportSign::ToStart, "Btn_ToStart"},
    {commands::kMeasureBack, TransportSign::Back, "Btn_Back"},
    {commands::kPlayStop, TransportSign::Play, "Btn_Play"},
    {commands::kMeasureForward, TransportSign::Forward, "Btn_Forward"},
    {commands::kLooping, TransportSign::Loop, "Btn_Loop"},
    {commands::kPanic, TransportSign::Panic, "Btn_Panic"},
});

} // namespace

PlayBar::PlayBar(MainMenu& menu, SessionSignals& session, QWidget* parent)
    : QWidget(parent),
      menu_(menu),
      session_(session),
      position_(new PositionDisplay),
      instrument_(new InstrumentBox(menu)),
      tempo_(new TempoBox(session)),
      output_(new OutputBox(session)) {
    auto* row = new FlowLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Gap());
    auto* buttons = new QWidget;
    AddButtons(*buttons);
    row->addWidget(buttons);
    row->addWidget(position_);
    position_->setFocusPolicy(Qt::StrongFocus);
    position_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(position_, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { menu_.Position().popup(position_->mapToGlobal(at)); });
    row->addWidget(instrument_);
    row->SetStretching(instrument_);
    row->addWidget(tempo_);
    row->addWidget(output_);
    connect(&session, &SessionSignals::PlayingChanged, this, &PlayBar::ShowPlaying);
    ShowSigns();
}

void PlayBar::AddButtons(QWidget& place) {
    auto* row = new QHBoxLayout(&place);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Gap() / 2);
    const int side = fontMetrics().height() * 9 / 4;
    for (const ButtonSpec& spec : kButtons) {
        auto* button = new QToolButton;
        button->setObjectName(QLatin1String(spec.objectName));
        button->setDefaultAction(&menu_.ActionOf(spec.command));
        button->setToolButtonStyle(Qt::ToolButtonIconOnly);
        // Whoever clicks here goes on with the keys: Space must not come back to the button.
        button->setFocusPolicy(Qt::TabFocus);
        const bool main = spec.command == commands::kPlayStop;
        button->setFixedSize(main ? side * 3 / 2 : side, side);
        button->setIconSize(QSize(side, side) * 45 / 100);
        row->addWidget(button);
        buttons_.push_back(button);
    }
}

void PlayBar::ShowSigns() {
    for (const ButtonSpec& spec : kButtons) {
        QAction& action = menu_.ActionOf(spec.command);
        const bool stop = spec.command == commands::kPlayStop && session_.Controls().Playing();
        action.setIcon(TransportIcon(stop ? TransportSign::Stop : spec.sign, palette()));
        action.setIconVisibleInMenu(false);
    }
}

void PlayBar::ShowPlaying(bool /*playing*/) {
    ShowSigns();
    Retranslate(language_);
}

void PlayBar::Retranslate(Language language) {
    language_ = language;
    position_->Retranslate(language);
    instrument_->Retranslate(language);
    tempo_->Retranslate(language);
    output_->Retranslate(language);
    menu_.SetTextOf(commands::kPlayStop, [this](Language wanted) {
        return InLanguage(session_.Controls().Playing() ? texts::kStop : texts::kPlay, wanted);
    });
    for (QToolButton* button : buttons_) {
        const QAction& action = *button->defaultAction();
        button->setAccessibleName(PlainMenuText(action.text()));
        const QString keys = action.shortcut().toString(QKeySequence::NativeText);
        button->setToolTip(PlainMenuText(action.text()) + QStringLiteral(" (%1)").arg(keys));
    }
}

void PlayBar::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        ShowSigns();
    }
    QWidget::changeEvent(event);
}

} // namespace tracksmith::forms
