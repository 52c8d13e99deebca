#include "instruments/forms/picker_form.h"

#include "base/forms/flat_header.h"
#include "base/forms/flow_layout.h"
#include "base/forms/labels.h"
#include "base/forms/panel.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include "instruments/forms/picker_groups.h"
#include "instruments/forms/picker_sound_delegate.h"
#include "instruments/forms/picker_sounds.h"
#include "instruments/forms/picker_texts.h"
#include "instruments/forms/picker_voice_card.h"
#include "instruments/voices/texts.h"

// How the window is put together; what it does is in picker_form_actions.cpp.

namespace tracksmith::forms {
namespace {

constexpr const char* kGeometry = "PickerGeometry";
constexpr int kPlayRefreshMs = 200;

QLabel* NewChip(std::size_t channel, const QPalette& palette) {
    auto* chip = new QLabel(QString::number(channel + 1));
    const QColor ground = ChannelColour(static_cast<int>(channel), palette);
    QPalette own = palette;
    own.setColor(QPalette::Window, ground);
    own.setColor(QPalette::WindowText, ground.lightnessF() > 0.5 ? Qt::black : Qt::white);
    chip->setPalette(own);
    chip->setAutoFillBackground(true);
    chip->setAlignment(Qt::AlignCenter);
    chip->setFont(ScaledFont(chip->font(), 1.2));
    chip->setMinimumSize(chip->fontMetrics().height() * 2, chip->fontMetrics().height() * 2);
    return chip;
}

// In a frame of the program's own.
QWidget* Framed(QAbstractScrollArea* list) {
    auto* panel = new Panel(QPalette::Base);
    auto* inside = new QVBoxLayout(panel);
    const int margin = static_cast<int>(CornerRadius() / 2) + 1;
    inside->setContentsMargins(margin, margin, margin, margin);
    inside->addWidget(list);
    list->setFrameShape(QFrame::NoFrame);
    return panel;
}

} // namespace

TPickerForm::TPickerForm(const instruments::VoiceTables& tables, instruments::PickerTask task,
                         std::unique_ptr<instruments::VoiceMemory> memory, Program program,
                         Language language, QWidget* parent)
    : QDialog(parent),
      memory_(std::move(memory)),
      picker_(tables, std::move(task), *memory_, program.host),
      program_(std::move(program)),
      language_(language),
      search_(new QLineEdit),
      hits_(NewCaption("L_PickerHits", this)),
      families_(new PickerGroups("LB_Families")),
      categories_(new PickerGroups("LB_Categories")),
      table_(new QTableView),
      sounds_(new PickerSounds(picker_, language, this)),
      delegate_(new PickerSoundDelegate(language, this)),
      nothing_(NewLabel("L_NoSound", this)),
      oldVoice_(new PickerVoiceCard("Card_OldVoice")),
      newVoice_(new PickerVoiceCard("Card_NewVoice")),
      solo_(new QCheckBox),
      noteOnSelection_(new QCheckBox),
      testNote_(new QComboBox),
      places_(new QComboBox),
      noteTimer_(new QTimer(this)),
      playTimer_(new QTimer(this)) {
    setObjectName(QStringLiteral("PickerForm"));
    setAttribute(Qt::WA_DeleteOnClose);
    Build();
    ShowFamilies();
    ShowCategories();
    ShowSounds();
    ShowVoices();
    resize(fontMetrics().averageCharWidth() * 150, fontMetrics().height() * 42);
    restoreGeometry(QByteArray::fromBase64(
        QByteArray::fromStdString(program_.store.ReadStrFromUserRegistry(kGeometry, ""))));
    ShowChosenRow();
    search_->setFocus();
}

TPickerForm::~TPickerForm() = default;

void TPickerForm::Build() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Gap() * 3 / 2, Gap() * 3 / 2, Gap() * 3 / 2, Gap() * 3 / 2);
    column->setSpacing(Gap());
    AddHeader(*column);
    AddLists(*column);
    AddComparison(*column);
    AddFooter(*column);
    AddKeys();
}

void TPickerForm::done(int result) {
    noteTimer_->stop();
    accepting_ = result == Accepted;
    if (accepting_) {
        picker_.Btn_OKClick();
    } else {
        picker_.Btn_CancelClick();
    }
    program_.store.WriteStrToUserRegistry(kGeometry, saveGeometry().toBase64().toStdString());
    QDialog::done(result);
}

QString TPickerForm::Say(const Text& text) const {
    return InLanguage(text, language_);
}

QPushButton* TPickerForm::NewButton(const char* objectName, const Text& text) {
    auto* button = new QPushButton(Say(text));
    button->setObjectName(QLatin1String(objectName));
    button->setAutoDefault(false);
    return button;
}

void TPickerForm::AddHeader(QVBoxLayout& column) {
    const std::size_t channel = picker_.Task().channel;
    const QString title = Say(picker_texts::kTitle).arg(channel + 1);
    setWindowTitle(title);
    auto* name = NewLabel("L_PickerTitle", this);
    name->setText(title);
    name->setFont(ScaledFont(font(), 1.4));
    auto* notes = NewCaption("L_PickerSubtitle", this);
    notes->setText(Say(picker_texts::kNotesOn)
                       .arg(NumberText(program_.notes, language_), program_.instrument));
    auto* titles = new QVBoxLayout;
    titles->setSpacing(0);
    titles->addWidget(name);
    titles->addWidget(notes);
    search_->setObjectName(QStringLiteral("E_SelectSoundName"));
    search_->setPlaceholderText(Say(picker_texts::kSearch));
    search_->setAccessibleName(Say(picker_texts::kSearch));
    search_->setClearButtonEnabled(true);
    search_->setMinimumWidth(fontMetrics().averageCharWidth() * 38);
    search_->installEventFilter(this);
    connect(search_, &QLineEdit::textChanged, this, &TPickerForm::Search);
    auto* row = new QHBoxLayout;
    row->addWidget(NewChip(channel, palette()));
    row->addLayout(titles, 1);
    row->addWidget(hits_);
    row->addWidget(search_);
    column.addLayout(row);
}

void TPickerForm::AddLists(QVBoxLayout& column) {
    families_->setAccessibleName(Say(picker_texts::kFamilies));
    categories_->setAccessibleName(Say(picker_texts::kCategories));
    connect(families_, &PickerGroups::Chosen, this, [this](std::size_t row) {
        picker_.LB_FamiliesClick(row);
        ShowCategories();
        ShowSounds();
    });
    connect(categories_, &PickerGroups::Chosen, this, [this](std::size_t row) {
        picker_.LB_CategoriesClick(row);
        ShowSounds();
    });
    SetUpSounds();
    nothing_->setText(Say(picker_texts::kNoHit));
    nothing_->hide();
    auto* voices = new QVBoxLayout;
    voices->addWidget(Framed(table_));
    voices->addWidget(nothing_);
    auto* row = new QHBoxLayout;
    row->setSpacing(Gap());
    row->addWidget(Framed(families_), 31);
    row->addWidget(Framed(categories_), 37);
    row->addLayout(voices, 100);
    column.addLayout(row, 1);
}

void TPickerForm::SetUpSounds() {
    table_->setObjectName(QStringLiteral("LB_Sounds"));
    table_->setAccessibleName(Say(picker_texts::kSounds));
    table_->setModel(sounds_);
    table_->setItemDelegate(delegate_);
    table_->setShowGrid(false);
    table_->setWordWrap(false);
    table_->setAlternatingRowColors(true);
    table_->setTabKeyNavigation(false);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    auto* header = new FlatHeader(table_);
    table_->setHorizontalHeader(header);
    header->setSectionsClickable(true);
    header->setSortIndicatorShown(true);
    header->setSectionResizeMode(QHeaderView::Fixed);
    header->setSectionResizeMode(PickerSounds::Name, QHeaderView::Stretch);
    table_->setColumnWidth(PickerSounds::Star, fontMetrics().height() * 2);
    for (const int number : {PickerSounds::Msb, PickerSounds::Lsb, PickerSounds::Program}) {
        table_->setColumnWidth(number, fontMetrics().averageCharWidth() * 8);
    }
    connect(header, &QHeaderView::sectionClicked, this, [this](int section) {
        using instruments::SoundOrder;
        constexpr std::array kOrders{SoundOrder::Table, SoundOrder::Name, SoundOrder::Msb,
                                     SoundOrder::Lsb, SoundOrder::Program};
        picker_.PM_SortSoundsClick(kOrders.at(static_cast<std::size_t>(section)));
        ShowSounds();
    });
    connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { ChooseSound(current.row()); });
    connect(table_, &QTableView::doubleClicked, this, &TPickerForm::accept);
    connect(delegate_, &PickerSoundDelegate::StarClicked, this, &TPickerForm::ToggleFavourite);
    table_->installEventFilter(this);
}

QWidget* TPickerForm::NewSwitch() {
    old_ = NewButton("Btn_OldVoice", picker_texts::kOld);
    new_ = NewButton("Btn_NewVoice", picker_texts::kNew);
    auto* both = new QWidget;
    auto* row = new QHBoxLayout;
    row->setSpacing(0);
    for (QPushButton* button : {old_, new_}) {
        button->setCheckable(true);
        button->setToolTip(Say(picker_texts::kSwitchHint));
        row->addWidget(button);
    }
    auto* hint = NewCaption("L_SwitchHint", both);
    hint->setText(QStringLiteral("Ctrl+B"));
    hint->setAlignment(Qt::AlignCenter);
    auto* column = new QVBoxLayout(both);
    column->setContentsMargins(0, 0, 0, 0);
    column->addStretch();
    column->addLayout(row);
    column->addWidget(hint);
    column->addStretch();
    connect(old_, &QPushButton::clicked, this, [this] {
        picker_.Btn_OldVoiceClick();
        ShowVoices();
    });
    connect(new_, &QPushButton::clicked, this, [this] {
        picker_.Btn_NewVoiceClick();
        ShowVoices();
    });
    return both;
}

void TPickerForm::AddComparison(QVBoxLayout& column) {
    auto* panel = new Panel(QPalette::Button);
    auto* inside = new QVBoxLayout(panel);
    inside->setContentsMargins(Gap(), Gap(), Gap(), Gap());
    auto* row = new QHBoxLayout;
    row->addWidget(oldVoice_, 1);
    row->addWidget(NewSwitch());
    row->addWidget(newVoice_, 1);
    inside->addLayout(row);
    AddControls(*inside);
    column.addWidget(panel);
}

void TPickerForm::AddControls(QVBoxLayout& column) {
    play_ = NewButton("Btn_PickerPlay", picker_texts::kPlay);
    solo_->setObjectName(QStringLiteral("CB_Solo"));
    solo_->setText(Say(picker_texts::kSolo));
    noteOnSelection_->setObjectName(QStringLiteral("CB_NoteOnSelection"));
    noteOnSelection_->setText(Say(picker_texts::kNoteOnSelection));
    noteOnSelection_->setChecked(true);
    AddTestNotes();
    connect(play_, &QPushButton::clicked, this, [this] {
        program_.playStop();
        ShowPlaying();
    });
    connect(solo_, &QCheckBox::toggled, this, [this](bool on) { picker_.CB_SoloClick(on); });
    connect(noteOnSelection_, &QCheckBox::toggled, this,
            [this](bool on) { picker_.SetNoteOnSelection(on); });
    noteTimer_->setSingleShot(true);
    connect(noteTimer_, &QTimer::timeout, this, &TPickerForm::StepTestNote);
    connect(playTimer_, &QTimer::timeout, this, &TPickerForm::ShowPlaying);
    playTimer_->start(kPlayRefreshMs);
    ShowPlaying();
    auto* row = new QWidget;
    auto* flow = new FlowLayout(row);
    flow->setContentsMargins(0, 0, 0, 0);
    for (QWidget* widget :
         std::initializer_list<QWidget*>{play_, solo_, noteOnSelection_, testNote_}) {
        flow->addWidget(widget);
    }
    auto* space = new QWidget;
    flow->addWidget(space);
    flow->SetStretching(space);
    column.addWidget(row);
    AddPlaces();
    if (program_.places.size() > 1) {
        auto* label = new QLabel(Say(picker_texts::kChangeAt));
        label->setBuddy(places_);
        flow->addWidget(label);
        flow->addWidget(places_);
    } else {
        places_->setParent(this);
        places_->hide();
    }
}

// The notes of a kit by their names, else by their numbers with the octave.
void TPickerForm::AddTestNotes() {
    testNote_->setObjectName(QStringLiteral("CB_TestNote"));
    testNote_->setAccessibleName(Say(picker_texts::kTestNote));
    static constexpr std::array kNames{"C",  "C#", "D",  "D#", "E",  "F",
                                       "F#", "G",  "G#", "A",  "A#", "B"};
    constexpr int kLowest = 24;
    constexpr int kHighest = 96;
    for (int note = kLowest; note <= kHighest; ++note) {
        const std::string_view kit = program_.kitNotes.names.at(static_cast<std::size_t>(note));
        const QString pitch = QLatin1String(kNames.at(static_cast<std::size_t>(note % 12))) +
                              QString::number(note / 12 - 2);
        if (!picker_.Task().drums) {
            testNote_->addItem(pitch, note);
        } else if (!kit.empty()) {
            testNote_->addItem(QString::number(note) + QStringLiteral(" ") + ToQString(kit), note);
        }
    }
    testNote_->setCurrentIndex(testNote_->findData(int{picker_.TestNote()}));
    connect(testNote_, &QComboBox::activated, this, [this] {
        picker_.SetTestNote(static_cast<std::uint8_t>(testNote_->currentData().toInt()));
        picker_.SoundTestNote();
        StepTestNote();
    });
}

// Each place where the song selects the voice, and all of them.
void TPickerForm::AddPlaces() {
    places_->setObjectName(QStringLiteral("CB_Places"));
    places_->setAccessibleName(PlainMenuText(Say(picker_texts::kChangeAt)));
    places_->addItems(program_.places);
    places_->addItem(Say(picker_texts::kAllPlaces).arg(program_.places.size()));
    connect(places_, &QComboBox::activated, this, [this](int row) {
        std::vector<std::size_t> chosen;
        const auto count = static_cast<std::size_t>(program_.places.size());
        const auto from = static_cast<std::size_t>(row);
        for (std::size_t place = from < count ? from : 0; place < (from < count ? from + 1 : count);
             ++place) {
            chosen.push_back(place);
        }
        picker_.ChooseChanges(chosen);
        ShowVoices();
    });
}

void TPickerForm::AddFooter(QVBoxLayout& column) {
    auto* favourite = NewButton("Btn_Favourite", picker_texts::kAddFavourite);
    favourite->setToolTip(QStringLiteral("Ctrl+D"));
    auto* revoicer = NewButton("Btn_SaveToRevoicer", picker_texts::kSaveToRevoicer);
    auto* accept = NewButton("Btn_OK", picker_texts::kAccept);
    auto* cancel = NewButton("Btn_Cancel", picker_texts::kCancel);
    accept->setDefault(true);
    connect(favourite, &QPushButton::clicked, this, &TPickerForm::ToggleFavourite);
    connect(revoicer, &QPushButton::clicked, this, &TPickerForm::SaveToRevoicer);
    connect(accept, &QPushButton::clicked, this, &TPickerForm::accept);
    connect(cancel, &QPushButton::clicked, this, &TPickerForm::reject);
    auto* row = new QHBoxLayout;
    row->addWidget(favourite);
    row->addWidget(revoicer);
    row->addStretch();
    row->addWidget(accept);
    row->addWidget(cancel);
    column.addLayout(row);
}

void TPickerForm::AddKeys() {
    const auto add = [this](const char* keys, auto action) {
        auto* shortcut = new QShortcut(QKeySequence(QLatin1String(keys)), this);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    add("Ctrl+D", [this] { ToggleFavourite(); });
    add("Ctrl+B", [this] { SwitchOldNew(); });
    add("Ctrl+F", [this] {
        search_->setFocus();
        search_->selectAll();
    });
}

} // namespace tracksmith::forms
