#include "mixer/forms/strips_view.h"

#include <algorithm>

#include "base/forms/panel.h"
#include "base/forms/theme.h"
#include <QHBoxLayout>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>

#include "mixer/forms/control_slider.h"
#include "mixer/forms/master_strip.h"
#include "mixer/forms/strip_menu.h"
#include "mixer/forms/texts.h"

namespace tracksmith::forms {
namespace {

constexpr int kFlushMs = 5;
/// Channels that have a key of their own.
constexpr int kKeyedChannels = 10;

// In the area of the strips, and in those around it that a large text makes scroll.
void ScrollTo(QWidget& strip) {
    for (QWidget* around = strip.parentWidget(); around != nullptr;
         around = around->parentWidget()) {
        if (auto* area = qobject_cast<QScrollArea*>(around)) {
            area->ensureWidgetVisible(&strip, 0, 0);
        }
    }
}

} // namespace

StripsView::StripsView(mixer::Mixer& mixer, QWidget* parent)
    : QWidget(parent), mixer_(mixer), master_(new MasterStrip(mixer, this)) {
    setObjectName(QStringLiteral("Strips"));
    auto* row = new QWidget;
    auto* strips = new QHBoxLayout(row);
    strips->setContentsMargins(0, 0, 0, 0);
    strips->setSpacing(std::max(2, Gap() / 3));
    for (int channel = 0; channel < static_cast<int>(strips_.size()); ++channel) {
        auto* strip = new ChannelStrip(mixer, channel, row);
        strips_[static_cast<std::size_t>(channel)] = strip;
        strips->addWidget(strip, 1);
        Connect(*strip);
    }
    auto* all = new QHBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(std::max(2, Gap() / 3));
    all->addWidget(NewScrollArea(row), 1);
    all->addWidget(master_);
    connect(master_, &MasterStrip::Changed, this, &StripsView::TakeChange);
    connect(master_, &MasterStrip::Refused, this, &StripsView::Refused);
    flush_.setInterval(kFlushMs);
    flush_.setTimerType(Qt::PreciseTimer);
    connect(&flush_, &QTimer::timeout, this, [this] {
        mixer_.Flush();
        if (!mixer_.Waiting()) {
            flush_.stop();
        }
    });
    AddKeys();
    Enter(static_cast<int>(mixer_.CurrentChannel()));
}

void StripsView::Connect(ChannelStrip& strip) {
    connect(&strip, &ChannelStrip::Entered, this, &StripsView::Enter);
    connect(&strip, &ChannelStrip::NeighbourWanted, this,
            [this, &strip](int step) { GoToNeighbour(strip.Channel(), step); });
    connect(&strip, &ChannelStrip::VoicePressed, this, &StripsView::VoicePressed);
    connect(&strip, &ChannelStrip::NumberPressed, this, [this](int channel, bool on) {
        SetBroughtOut(on ? channel : -1);
        emit ChannelChosen(on ? channel : -1);
    });
    connect(&strip, &ChannelStrip::MenuWanted, this, &StripsView::ShowMenu);
    connect(&strip, &ChannelStrip::HollowMoved, this, &StripsView::OfferInserting);
    connect(&strip, &ChannelStrip::Changed, this, &StripsView::TakeChange);
    connect(&strip, &ChannelStrip::Refused, this, &StripsView::Refused);
}

// Ctrl+1 to Ctrl+9, and Ctrl+0 for channel 10.
void StripsView::AddKeys() {
    for (int channel = 0; channel < kKeyedChannels; ++channel) {
        auto* key = new QShortcut(
            QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_0 + (channel + 1) % 10)), this);
        connect(key, &QShortcut::activated, this, [this, channel] { FocusChannel(channel); });
    }
}

void StripsView::TakeChange() {
    ShowState();
    if (mixer_.Waiting() && !flush_.isActive()) {
        flush_.start();
    }
}

void StripsView::ShowSong(const VoiceName& voiceName) {
    offered_ = false;
    SetBroughtOut(-1);
    for (ChannelStrip* strip : strips_) {
        strip->ShowSong();
    }
    ShowVoices(voiceName);
    ShowState();
    if (!StripOf(static_cast<int>(mixer_.CurrentChannel())).Used()) {
        const auto used = std::ranges::find_if(strips_, &ChannelStrip::Used);
        Enter(used == strips_.end() ? 0 : (*used)->Channel());
    }
}

void StripsView::ShowVoices(const VoiceName& voiceName) {
    for (ChannelStrip* strip : strips_) {
        strip->ShowVoice(voiceName(strip->Channel()));
    }
}

void StripsView::ShowState() {
    for (ChannelStrip* strip : strips_) {
        strip->ShowState();
    }
    master_->ShowState();
}

void StripsView::ShowFrame() {
    mixer_.Refresh();
    ShowState();
    std::optional<unsigned> loudest;
    for (ChannelStrip* strip : strips_) {
        const auto level = mixer_.Level(static_cast<std::size_t>(strip->Channel()));
        strip->ShowLevel(level);
        loudest = std::max(loudest, level);
    }
    master_->ShowLevel(loudest);
    mixer_.LetLevelsFall();
}

void StripsView::SetPage(StripPage page) {
    for (ChannelStrip* strip : strips_) {
        strip->SetPage(page);
    }
}

void StripsView::SetBroughtOut(int channel) {
    for (ChannelStrip* strip : strips_) {
        strip->SetBroughtOut(strip->Channel() == channel);
    }
}

void StripsView::Retranslate(Language language) {
    language_ = language;
    setAccessibleName(InLanguage(mixer_texts::kMixer, language));
    for (ChannelStrip* strip : strips_) {
        strip->Retranslate(language);
    }
    master_->Retranslate(language);
}

void StripsView::Enter(int channel) {
    mixer_.SetMidiChannel(static_cast<std::size_t>(channel));
    for (ChannelStrip* strip : strips_) {
        strip->SetCurrent(strip->Channel() == channel);
    }
}

void StripsView::FocusChannel(int channel) {
    if (StripOf(channel).Used()) {
        StripOf(channel).FocusPlace(
            StripOf(static_cast<int>(mixer_.CurrentChannel())).FocusedPlace());
        ScrollTo(StripOf(channel));
    }
}

// Strips that the song does not use are passed over; the row ends at its ends.
void StripsView::GoToNeighbour(int from, int step) {
    for (int channel = from + step; channel >= 0 && channel < static_cast<int>(strips_.size());
         channel += step) {
        if (StripOf(channel).Used()) {
            StripOf(channel).FocusPlace(StripOf(from).FocusedPlace());
            ScrollTo(StripOf(channel));
            return;
        }
    }
}

void StripsView::ShowMenu(int channel, mixer::Control control, const QPoint& at) {
    auto* slider = StripOf(channel).SliderOf(control);
    const StripMenuActions actions{
        [slider] { slider->TypeValue(); },
        [this, channel, control] { emit InsertWanted(channel, control); },
        [this, channel] {
            TakeChange();
            StripOf(channel).ShowSong();
        }};
    NewStripMenu(mixer_, static_cast<std::size_t>(channel), control, actions, language_, this)
        ->popup(at);
}

void StripsView::OfferInserting(int channel, mixer::Control control) {
    if (!offered_ && mixer_.CanInsertAtStart(static_cast<std::size_t>(channel), control)) {
        offered_ = true;
        const auto* slider = StripOf(channel).SliderOf(control);
        ShowMenu(channel, control, slider->mapToGlobal(slider->rect().center()));
    }
}

} // namespace tracksmith::forms
