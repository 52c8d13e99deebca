#include "app/forms/song/channel_cards.h"

#include <algorithm>

#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>

#include "app/forms/song/voice_lines.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {
namespace {

constexpr int kDrumChannel = 9;
constexpr double kCaptionSize = 0.8;
/// Per cent of the usual width, for names that do not fit.
constexpr int kNarrowLetters = 85;
constexpr const char* kNothing = "–";

// "0·112·5": bank select MSB and LSB, then the program counted from 1.
QString NumbersText(const app::SongDescription::ChannelLine& line) {
    const auto part = [](std::optional<std::uint8_t> byte, int from) {
        return byte ? QString::number(*byte + from) : ToQString(kNothing);
    };
    if (!line.bankMsb && !line.bankLsb) {
        return part(line.program, 1);
    }
    return part(line.bankMsb, 0) + QStringLiteral("·") + part(line.bankLsb, 0) +
           QStringLiteral("·") + part(line.program, 1);
}

} // namespace

ChannelCard::ChannelCard(int channel, QWidget* parent)
    : QAbstractButton(parent), channel_(channel) {
    setObjectName(QStringLiteral("Card_Channel%1").arg(channel, 2, 10, QLatin1Char('0')));
    setCheckable(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ChannelCard::ShowLine(const app::SongDescription::ChannelLine* line, const ShownVoice& voice,
                           Language language) {
    const QString nothing = ToQString(kNothing);
    voice_ = voice.name.isEmpty() ? nothing : voice.Marked();
    const QString spoken =
        voice.similar ? InLanguage(texts::kSimilarVoice, language).arg(voice.name) : voice_;
    fields_ = {{{InLanguage(texts::kNotes, language),
                 line != nullptr ? NumberText(line->notes, language) : nothing},
                {InLanguage(texts::kBankProgram, language),
                 line != nullptr ? NumbersText(*line) : nothing}}};
    setEnabled(line != nullptr);
    setAccessibleName(line != nullptr ? texts::ChannelCardName(channel_, spoken, fields_[0].value,
                                                               fields_[1].value, language)
                                      : texts::UnusedChannelName(channel_, language));
    setToolTip(voice_ + QStringLiteral("\n") +
               (voice.similar ? voice.why + QStringLiteral("\n") : QString()) +
               InLanguage(texts::kChannelHint, language));
    update();
}

QSize ChannelCard::sizeHint() const {
    const QFontMetrics small(ScaledFont(font(), kCaptionSize));
    const int lines = fontMetrics().height() + 2 * small.height() +
                      static_cast<int>(fields_.size()) * (small.height() + fontMetrics().height());
    return {fontMetrics().averageCharWidth() * 7, lines + 2 * Gap()};
}

void ChannelCard::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() ? 1 : 0.45);
    const bool marked = isChecked() || hasFocus();
    painter.setPen(QPen(marked ? Accent(palette()) : Border(palette()), isChecked() ? 2 : 1));
    painter.setBrush(palette().brush(QPalette::Button));
    const QRectF frame = QRectF(rect()).adjusted(1, 1, -1, -1);
    painter.drawRoundedRect(frame, CornerRadius(), CornerRadius());
    const QRectF inside = frame.adjusted(Gap() * 0.75, Gap() * 0.75, -2, -Gap() / 2.0);
    PaintHead(painter, inside);
    const QFontMetricsF small(ScaledFont(font(), kCaptionSize));
    const double height = small.height() + fontMetrics().height();
    double top = inside.top() + fontMetrics().height() + 2;
    PaintVoice(painter, {inside.left(), top, inside.width(), 2 * small.height()});
    top += 2 * small.height();
    for (const Field& field : fields_) {
        PaintField(painter, {inside.left(), top, inside.width(), height}, field);
        top += height;
    }
}

void ChannelCard::PaintHead(QPainter& painter, const QRectF& inside) const {
    // The strip of colour follows the rounded corners of the card.
    painter.save();
    painter.setClipRect(QRectF(0, 0, width(), Gap() / 2.0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(ChannelColour(channel_, palette()));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), CornerRadius(), CornerRadius());
    painter.restore();
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(palette().color(QPalette::ButtonText));
    QRectF number;
    painter.drawText(inside, Qt::AlignLeft | Qt::AlignTop, QString::number(channel_ + 1), &number);
    const QFont small = ScaledFont(font(), kCaptionSize);
    const QString drums = ToQString(texts::kDrums.english);
    const double room = inside.right() - number.right() - Gap();
    if (channel_ == kDrumChannel && QFontMetricsF(small).horizontalAdvance(drums) <= room) {
        painter.setFont(small);
        painter.setPen(DimText(palette()));
        painter.drawText(inside.adjusted(0, 1, -4, 0), Qt::AlignRight | Qt::AlignTop, drums);
    }
}

void ChannelCard::PaintVoice(QPainter& painter, const QRectF& place) const {
    QFont small = ScaledFont(font(), kCaptionSize);
    auto lines = VoiceLines(voice_, QFontMetricsF(small), place.width());
    if (lines.first.endsWith(u'…') || lines.second.endsWith(u'…')) {
        small.setStretch(kNarrowLetters);
        lines = VoiceLines(voice_, QFontMetricsF(small), place.width());
    }
    painter.setFont(small);
    painter.setPen(palette().color(QPalette::ButtonText));
    painter.drawText(place, Qt::AlignLeft | Qt::AlignTop, lines.first);
    painter.drawText(place, Qt::AlignLeft | Qt::AlignBottom, lines.second);
}

void ChannelCard::PaintField(QPainter& painter, const QRectF& place, const Field& field) const {
    painter.setFont(ScaledFont(font(), kCaptionSize));
    painter.setPen(DimText(palette()));
    painter.drawText(place, Qt::AlignLeft | Qt::AlignTop, field.caption);
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::ButtonText));
    painter.drawText(place, Qt::AlignLeft | Qt::AlignBottom, field.value);
}

ChannelCards::ChannelCards(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("ChannelCards"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Gap() / 2);
    for (int channel = 0; channel < 16; ++channel) {
        auto* card = new ChannelCard(channel, this);
        card->installEventFilter(this);
        connect(card, &QAbstractButton::clicked, this,
                [this, channel](bool on) { Choose(channel, on); });
        row->addWidget(card, 1);
        cards_[static_cast<std::size_t>(channel)] = card;
    }
}

void ChannelCards::ShowChannels(const std::vector<app::SongDescription::ChannelLine>& lines,
                                const VoiceName& voiceName, Language language) {
    for (int channel = 0; channel < 16; ++channel) {
        const auto line = std::find_if(lines.begin(), lines.end(), [channel](const auto& each) {
            return each.channel == channel;
        });
        const bool used = line != lines.end();
        cards_[static_cast<std::size_t>(channel)]->ShowLine(
            used ? &*line : nullptr, used ? voiceName(*line) : ShownVoice(), language);
    }
    const auto first = std::find_if(cards_.begin(), cards_.end(),
                                    [](const ChannelCard* card) { return card->isEnabled(); });
    SetTabStop(static_cast<int>(first - cards_.begin()));
}

int ChannelCards::ChosenChannel() const {
    const auto chosen = std::find_if(cards_.begin(), cards_.end(),
                                     [](const ChannelCard* card) { return card->isChecked(); });
    return chosen == cards_.end() ? -1 : static_cast<int>(chosen - cards_.begin());
}

void ChannelCards::Choose(int channel, bool on) {
    for (int each = 0; each < 16; ++each) {
        cards_[static_cast<std::size_t>(each)]->setChecked(on && each == channel);
    }
    emit ChannelChosen(on ? channel : -1);
}

bool ChannelCards::eventFilter(QObject* watched, QEvent* event) {
    const auto place = std::find(cards_.begin(), cards_.end(), watched);
    if (place == cards_.end()) {
        return false;
    }
    const int channel = static_cast<int>(place - cards_.begin());
    if (event->type() == QEvent::FocusIn) {
        SetTabStop(channel);
    } else if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const int step = key == Qt::Key_Left ? -1 : key == Qt::Key_Right ? 1 : 0;
        return step != 0 && FocusNext(channel, step);
    }
    return false;
}

bool ChannelCards::FocusNext(int from, int step) {
    for (int channel = from + step; channel >= 0 && channel < 16; channel += step) {
        ChannelCard* card = cards_[static_cast<std::size_t>(channel)];
        if (card->isEnabled()) {
            card->setFocus(Qt::TabFocusReason);
            return true;
        }
    }
    return true; // the row ends here; the key must not leave it
}

void ChannelCards::SetTabStop(int channel) {
    for (int each = 0; each < 16; ++each) {
        cards_[static_cast<std::size_t>(each)]->setFocusPolicy(each == channel ? Qt::StrongFocus
                                                                               : Qt::ClickFocus);
    }
}

} // namespace tracksmith::forms
