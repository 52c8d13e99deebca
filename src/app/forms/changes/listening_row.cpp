#include "app/forms/changes/listening_row.h"

#include <utility>

#include "base/forms/dialog_frame.h"
#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>

#include "app/forms/changes/texts.h"
#include "app/forms/transport/session_signals.h"
#include "song/song_position.h"

namespace tracksmith::forms {
namespace {

QPushButton* NewChoice(const char* objectName) {
    QPushButton* button = NewButton(objectName, {});
    button->setCheckable(true);
    return button;
}

} // namespace

ListeningRow::ListeningRow(SessionSignals& session, Language language, QWidget* parent)
    : QWidget(parent),
      session_(session),
      language_(language),
      play_(NewButton("Btn_ChangesPlay", {})),
      place_(NewLabel("Lbl_ChangesPlace", nullptr)),
      before_(NewChoice("Btn_Before")),
      after_(NewChoice("Btn_After")) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Gap());
    place_->setFont(DigitFont(1.1));
    before_->setText(InLanguage(changes_texts::kBefore, language));
    after_->setText(InLanguage(changes_texts::kAfter, language));
    auto* sides = new QHBoxLayout;
    sides->setSpacing(0);
    sides->addWidget(before_);
    sides->addWidget(after_);
    QLabel* keys = NewCaption("Lbl_SwitchKeys", nullptr);
    keys->setText(InLanguage(changes_texts::kSwitches, language));
    row->addWidget(play_);
    row->addWidget(place_);
    row->addLayout(sides);
    row->addWidget(keys, 1);
    auto* key = new QShortcut(QKeySequence(QStringLiteral("Ctrl+B")), this);
    connect(key, &QShortcut::activated, this, &ListeningRow::Switch);
    connect(play_, &QPushButton::clicked, this, &ListeningRow::PlayStop);
    connect(before_, &QPushButton::clicked, this, [this] { Hear(true); });
    connect(after_, &QPushButton::clicked, this, [this] { Hear(false); });
    connect(&session_, &SessionSignals::PlayingChanged, this, &ListeningRow::ShowState);
    connect(&session_, &SessionSignals::HeardSongChanged, this, &ListeningRow::ShowState);
    connect(&session_, &SessionSignals::PlaceChanged, this, &ListeningRow::ShowPlace);
    ShowState();
    ShowPlace();
}

ListeningRow::~ListeningRow() {
    End();
}

void ListeningRow::End() {
    if (session_.Session().HearsOther()) {
        session_.Controls().Hear(nullptr);
    }
}

void ListeningRow::SetBefore(std::shared_ptr<session::OtherSong> before) {
    state_ = std::move(before);
    ShowState();
}

void ListeningRow::PlayStop() {
    session_.Controls().TogglePlay();
}

void ListeningRow::Switch() {
    Hear(!session_.Session().HearsOther());
}

void ListeningRow::Hear(bool before) {
    if (!before || state_) {
        session_.Controls().Hear(before ? state_ : nullptr);
    }
    ShowState();
}

void ListeningRow::ShowState() {
    const bool other = session_.Session().HearsOther();
    play_->setText(InLanguage(
        session_.Controls().Playing() ? changes_texts::kStopPlaying : changes_texts::kPlay,
        language_));
    before_->setEnabled(state_ != nullptr || other);
    before_->setChecked(other);
    after_->setChecked(!other);
}

void ListeningRow::ShowPlace() {
    const session::Transport& controls = session_.Controls();
    const auto map = controls.Map();
    place_->setText(map->timeZones.empty()
                        ? QString()
                        : ToQString(song::SongPositionToMTC(*map, controls.Tick())));
}

} // namespace tracksmith::forms
