#include "editing/forms/transpose_range_form.h"

#include <string>
#include <utility>
#include <vector>

#include "base/errors.h"
#include "base/forms/flow_layout.h"
#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QComboBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QRadioButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "editing/forms/figure_lines.h"
#include "editing/forms/number_field.h"
#include "editing/forms/range_colours.h"
#include "editing/forms/range_overview.h"
#include "editing/forms/texts.h"
#include "editing/texts.h"
#include "song/note_names.h"

namespace tracksmith::forms {
namespace {

enum Column {
    ChannelColumn,
    VoiceColumn,
    NotesColumn,
    NowColumn,
    ArrowColumn,
    AfterColumn,
    Columns
};

/// The list of channels leaves the drums' out.
constexpr std::size_t kEntries = song::kMidiChannels - 1;

QString PitchRange(std::uint8_t lowest, std::uint8_t highest) {
    return ToQString(song::NoteName(lowest) + " – " + song::NoteName(highest));
}

QString ChordLine(const std::vector<std::string>& chords) {
    QStringList names;
    for (const std::string& chord : chords) {
        names << ToQString(chord);
    }
    return names.join(QStringLiteral("  "));
}

// "+2" or "−3": as it is read, not as it was typed.
QString Signed(int semitones) {
    return semitones < 0 ? QStringLiteral("−%1").arg(-semitones)
                         : QStringLiteral("+%1").arg(semitones);
}

} // namespace

TTransposeRangeForm::TTransposeRangeForm(session::Session& session, editing::RangeTools& tools,
                                         MessageHost& host, RangeFormActions actions,
                                         const editing::RangeWish& wish, QWidget* parent)
    : RangeForm(session, tools, host, std::move(actions), parent) {
    Start("Dlg_TransposeRange", range_texts::kTransposeRange, range_texts::kTransposePurpose, wish);
}

void TTransposeRangeForm::BuildPositions(FlowLayout& row) {
    auto* semitones = new QWidget;
    auto* amount = new QVBoxLayout(semitones);
    amount->setContentsMargins(0, 0, 0, 0);
    amount->setSpacing(Gap() / 2);
    QLabel* caption = NewCaption("Lbl_Semitones", this);
    caption->setText(Say(range_texts::kSemitones));
    semitones_ = new NumberField(QStringLiteral("E_Semitones"), 1, this);
    semitones_->setAccessibleName(Say(range_texts::kSemitones));
    semitones_->SetText(QStringLiteral("+1"));
    amount->addWidget(caption);
    amount->addWidget(semitones_);
    row.addWidget(semitones);
    auto* channels = new QWidget;
    auto* grid = new QGridLayout(channels);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(Gap() / 2);
    QLabel* which = NewCaption("Lbl_Channels", this);
    which->setText(Say(range_texts::kChannels));
    all_ = new QRadioButton(Say(range_texts::kAllChannels));
    all_->setObjectName(QStringLiteral("RB_AllChannels"));
    all_->setChecked(true);
    only_ = new QRadioButton(Say(range_texts::kOnlyOnChannel));
    only_->setObjectName(QStringLiteral("RB_OnlyOnChannel"));
    channels_ = new QComboBox;
    channels_->setObjectName(QStringLiteral("CB_OnlyOnChannel"));
    channels_->setAccessibleName(Say(range_texts::kChannelList));
    channels_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    channels_->setMinimumContentsLength(14);
    FillChannels();
    grid->addWidget(which, 0, 0);
    grid->addWidget(all_, 1, 0);
    grid->addWidget(only_, 1, 1);
    grid->addWidget(channels_, 1, 2);
    grid->setColumnStretch(3, 1);
    row.addWidget(channels);
    connect(semitones_, &NumberField::Edited, this, &TTransposeRangeForm::Validate);
    connect(semitones_, &NumberField::Stepped, this, &TTransposeRangeForm::StepSemitones);
    connect(only_, &QRadioButton::toggled, this, [this](bool only) {
        channels_->setEnabled(only);
        Validate();
    });
    connect(channels_, &QComboBox::activated, this, &TTransposeRangeForm::CB_OnlyOnChannelChange);
    channels_->setEnabled(false);
}

void TTransposeRangeForm::FillChannels() {
    for (std::size_t entry = 0; entry < kEntries; ++entry) {
        const std::size_t channel = editing::ChannelOfSelection(entry);
        const QString number = QStringLiteral("%1").arg(channel + 1, 2, 10, QLatin1Char('0'));
        channels_->addItem(number + QStringLiteral(" - ") + Actions().voiceName(channel));
    }
}

void TTransposeRangeForm::StepSemitones(int steps) {
    const int former = editing::SemitonesOf(semitones_->Text().toStdString()).value_or(0);
    const int value = std::clamp(former + steps, -127, 127);
    semitones_->SetText(value > 0 ? QStringLiteral("+%1").arg(value) : QString::number(value));
    Validate();
}

void TTransposeRangeForm::CB_OnlyOnChannelChange() {
    const auto entry = static_cast<std::size_t>(channels_->currentIndex());
    if (!editing::ChannelsWithNotes(Owner().Song())[editing::ChannelOfSelection(entry)]) {
        Host().ShowMessage(editing::texts::kCannotTranspose.In(CurrentLanguage()));
    }
    Validate();
}

void TTransposeRangeForm::BuildDetails(QHBoxLayout& row) {
    table_ = new QTableWidget(0, Columns, this);
    table_->setObjectName(QStringLiteral("Grid_Transpose"));
    table_->setAccessibleName(Say(range_texts::kWhatMoves));
    table_->setHorizontalHeaderLabels({Say(range_texts::kChannelColumn),
                                       Say(range_texts::kVoiceColumn),
                                       Say(range_texts::kNotesColumn), Say(range_texts::kNow),
                                       QString(), Say(range_texts::kAfter)});
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setShowGrid(false);
    table_->setAlternatingRowColors(true);
    table_->setTabKeyNavigation(false);
    table_->horizontalHeader()->setHighlightSections(false);
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table_->horizontalHeader()->setSectionResizeMode(VoiceColumn, QHeaderView::Stretch);
    row.addWidget(table_, 1);
}

editing::Transposing TTransposeRangeForm::Transposing() const {
    editing::Transposing transposing;
    transposing.semitones = semitones_->Text().toStdString();
    if (only_->isChecked()) {
        const auto entry = static_cast<std::size_t>(channels_->currentIndex());
        transposing.channel = editing::ChannelOfEntry(entry);
        transposing.label = editing::ChannelLabel(channels_->currentText().toStdString());
    }
    Actions().completeTransposing(transposing);
    return transposing;
}

editing::RangeReading TTransposeRangeForm::Check() const {
    return editing::CheckTranspose(Owner().Song(), Wish(), Transposing(), CurrentLanguage())
        .reading;
}

editing::Foresight TTransposeRangeForm::Foresee() const {
    return editing::ForeseeTranspose(Owner().Song(), Wish(), Transposing(), CurrentLanguage());
}

QString TTransposeRangeForm::ActText(const editing::RangeFigures& /*figures*/) const {
    const editing::Transposing transposing = Transposing();
    const QString amount = Signed(editing::SemitonesOf(transposing.semitones).value_or(0));
    return transposing.channel
               ? range_texts::TransposeChannelBy(
                     static_cast<std::int64_t>(*transposing.channel) + 1, amount, CurrentLanguage())
               : range_texts::TransposeBy(amount, CurrentLanguage());
}

void TTransposeRangeForm::PutRow(std::size_t channel, const editing::ChannelMove& move) {
    const int row = table_->rowCount();
    table_->insertRow(row);
    const bool moves = move.moved > 0;
    const bool drums = !editing::MelodyChannels(Owner().Song())[channel];
    const auto put = [&](int column, const QString& text, Qt::Alignment alignment) {
        auto* item = new QTableWidgetItem(text);
        item->setTextAlignment(alignment | Qt::AlignVCenter);
        if (!moves) {
            item->setForeground(DimText(palette()));
        }
        table_->setItem(row, column, item);
        return item;
    };
    put(ChannelColumn, QString::number(channel + 1), Qt::AlignRight)
        ->setForeground(ChannelColour(static_cast<int>(channel), palette()));
    put(VoiceColumn, Actions().voiceName(channel), Qt::AlignLeft);
    put(NotesColumn, NumberText(move.notes, CurrentLanguage()), Qt::AlignRight);
    put(NowColumn,
        drums && !moves ? Say(range_texts::kDrums) : PitchRange(move.lowest, move.highest),
        Qt::AlignLeft);
    put(ArrowColumn, moves ? QStringLiteral("→") : QString(), Qt::AlignHCenter);
    put(AfterColumn,
        moves ? PitchRange(move.lowestAfter, move.highestAfter) : Say(range_texts::kStay),
        Qt::AlignLeft);
}

void TTransposeRangeForm::ShowForesight(const editing::Foresight& foresight) {
    const Language language = CurrentLanguage();
    const editing::TickRange& range = foresight.reading.range;
    const QPalette& colours = palette();
    After().ShowRange(
        RangeMark{range.start, range.end, Accent(colours), false,
                  Signed(editing::SemitonesOf(semitones_->Text().toStdString()).value_or(0))});
    table_->setRowCount(0);
    editing::ChannelMove sum;
    std::int64_t channels = 0;
    for (std::size_t channel = 0; channel < foresight.moves.size(); ++channel) {
        const editing::ChannelMove& move = foresight.moves[channel];
        if (move.notes > 0) {
            PutRow(channel, move);
            sum.notes += move.notes;
            sum.moved += move.moved;
            sum.folded += move.folded;
            channels += move.moved > 0 ? 1 : 0;
        }
    }
    std::vector<FigureLines::Line> lines{
        {Accent(colours), range_texts::NotesMove(sum.moved, channels, language)},
        {sum.folded > 0 ? AmberColour(colours) : GreenColour(colours),
         sum.folded > 0 ? range_texts::NotesFolded(sum.folded, language)
                        : Say(range_texts::kNoFolds)}};
    if (sum.notes > sum.moved) {
        lines.push_back(
            {DimText(colours), range_texts::NotesStay(sum.notes - sum.moved, language)});
    }
    Figures().Show(
        Say(range_texts::kWhatMoves), lines,
        {Say(range_texts::kChords), ChordLine(foresight.chords), ChordLine(foresight.chordsAfter)});
}

void TTransposeRangeForm::ShowNothing() {
    table_->setRowCount(0);
    After().ShowRange({});
    Figures().Show(Say(range_texts::kWhatMoves), {});
}

editing::SeamSpan TTransposeRangeForm::HeardSpan(const editing::Foresight& foresight) const {
    return {foresight.reading.range.start, foresight.reading.range.end};
}

Text TTransposeRangeForm::PreviewText() const {
    return range_texts::kPreviewKey;
}

// The places of both songs are the same.
void TTransposeRangeForm::ShowHeardPlace(std::int32_t tick) {
    if (tick >= 0) {
        Now().ShowPlace(tick);
    }
}

// One entry of the list stands for another channel than it names; the user decides.
void TTransposeRangeForm::ProcessData() {
    const editing::Transposing transposing = Transposing();
    if (transposing.channel) {
        const auto entry = static_cast<std::size_t>(channels_->currentIndex());
        const std::size_t named = editing::ChannelOfSelection(entry);
        if (named != *transposing.channel &&
            !Host().AskYesNo(
                range_texts::OtherChannel(static_cast<std::int64_t>(named) + 1,
                                          static_cast<std::int64_t>(*transposing.channel) + 1,
                                          CurrentLanguage())
                    .toStdString())) {
            throw EMidiError(std::string()); // the user's own answer
        }
    }
    const std::int64_t moved = Tools().Transpose(Wish(), transposing);
    Actions().tell(range_texts::kTransposeDone, moved);
}

} // namespace tracksmith::forms
