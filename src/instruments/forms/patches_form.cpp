#include "instruments/forms/patches_form.h"

#include <exception>
#include <span>

#include "base/display_text.h"
#include "base/forms/dialog_frame.h"
#include "base/forms/labels.h"
#include "base/forms/list_panel.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include "base/system/file_io.h"
#include <QComboBox>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "instruments/forms/texts.h"
#include "instruments/importers/import_file.h"
#include "instruments/voices/user_table.h"
#include "instruments/voices/voice_file_error.h"
#include "instruments/voices/voice_list.h"
#include "instruments/voices/voice_table_writer.h"

namespace tracksmith::forms {
namespace {

using instruments::ImportedTable;
using instruments::Voice;
using instruments::VoiceList;

// A line of text that takes no room while it says nothing.
void ShowLine(QLabel& label, const QString& text) {
    label.setText(text);
    label.setVisible(!text.isEmpty());
}

Row VoiceRow(const Voice& voice) {
    Row row;
    row.cells = {ToQString(voice.name),      ToQString(voice.category),
                 ToQString(voice.family),    QString::number(voice.msb),
                 QString::number(voice.lsb), QString::number(voice.program + 1)};
    return row;
}

std::vector<Voice> CopyOf(const std::vector<const Voice*>& voices) {
    std::vector<Voice> copy;
    copy.reserve(voices.size());
    for (const Voice* voice : voices) {
        copy.push_back(*voice);
    }
    return copy;
}

// The table of a file with one model, or the one that the user picks.
const ImportedTable* Pick(QWidget* window, const std::vector<ImportedTable>& tables,
                          const QString& question) {
    if (tables.size() == 1) {
        return tables.data();
    }
    QStringList models;
    for (const ImportedTable& table : tables) {
        models << ToQString(table.modelName);
    }
    bool chosen = false;
    const QString model =
        QInputDialog::getItem(window, question, question, models, 0, false, &chosen);
    return chosen ? &tables.at(static_cast<std::size_t>(models.indexOf(model))) : nullptr;
}

} // namespace

TPatchesForm::TPatchesForm(const instruments::OutputTable& outputs,
                           instruments::VoiceTables& tables, Program program, MessageHost& host,
                           QWidget* parent)
    : QDialog(parent),
      outputs_(outputs),
      tables_(tables),
      program_(std::move(program)),
      host_(host),
      language_(host.CurrentLanguage()),
      choice_(new QComboBox),
      family_(new QComboBox),
      search_(new QLineEdit),
      playingLine_(NewLabel("L_ChannelPlays", this)),
      list_(new ListPanel("Table_Voices", instrument_texts::kVoices,
                          {{instrument_texts::kName},
                           {instrument_texts::kCategory},
                           {instrument_texts::kFamily},
                           {instrument_texts::kMsb, true},
                           {instrument_texts::kLsb, true},
                           {instrument_texts::kProgram, true}},
                          0)),
      nothing_(NewLabel("L_NoVoice", this)),
      message_(NewLabel("L_VoicesMessage", this)) {
    setObjectName(QStringLiteral("PatchesForm"));
    setAttribute(Qt::WA_DeleteOnClose);
    AddColumn(*this);
    AddInstruments();
    layout()->addWidget(playingLine_);
    AddSearch();
    layout()->addWidget(list_);
    list_->Retranslate(language_);
    for (QLabel* line : {playingLine_, nothing_, message_}) {
        line->setWordWrap(true);
        line->hide();
    }
    layout()->addWidget(nothing_);
    layout()->addWidget(message_);
    AddFileButtons();
    search_->setFocus();
    resize(fontMetrics().averageCharWidth() * 110, fontMetrics().height() * 34);
}

QString TPatchesForm::Say(const Text& text) const {
    return InLanguage(text, language_);
}

const instruments::Instrument& TPatchesForm::Instrument() const {
    return *instruments::FindInstrument(instrument_);
}

void TPatchesForm::DisplayInstrumentPatches(std::size_t channel) {
    DisplayInstrument(outputs_.InstrumentOfChannel(channel));
    const QString playing = program_.playing(channel);
    ShowLine(*playingLine_,
             playing.isEmpty()
                 ? QString()
                 : Say(instrument_texts::kChannelPlays).arg(QString::number(channel + 1), playing));
}

void TPatchesForm::DisplayInstrument(instruments::InstrumentId instrument) {
    instrument_ = instrument;
    const QSignalBlocker silent(choice_);
    choice_->setCurrentIndex(choice_->findData(int{instrument}));
    options_ = program_.options(instrument_);
    setWindowTitle(Say(instrument_texts::kVoicesTitle).arg(ToQString(Instrument().name)));
    playingLine_->hide();
    ShowProblems();
    ShowFamilies();
    ShowVoices();
}

void TPatchesForm::AddInstruments() {
    choice_->setObjectName(QStringLiteral("CB_PatchesInstrument"));
    choice_->setAccessibleName(Say(instrument_texts::kInstrument));
    for (const instruments::Instrument& instrument : instruments::Catalogue()) {
        choice_->addItem(ToQString(instrument.name), int{instrument.id});
    }
    layout()->addWidget(choice_);
    connect(choice_, &QComboBox::activated, this, [this] {
        DisplayInstrument(static_cast<instruments::InstrumentId>(choice_->currentData().toInt()));
    });
}

void TPatchesForm::AddSearch() {
    search_->setObjectName(QStringLiteral("E_SelectSoundName"));
    search_->setPlaceholderText(Say(instrument_texts::kSearchVoice));
    search_->setAccessibleName(Say(instrument_texts::kSearchVoice));
    search_->setClearButtonEnabled(true);
    family_->setObjectName(QStringLiteral("CB_VoiceFamily"));
    family_->setAccessibleName(Say(instrument_texts::kFamily));
    family_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    auto* row = new QHBoxLayout;
    row->addWidget(search_, 1);
    row->addWidget(family_);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    connect(search_, &QLineEdit::textChanged, this, &TPatchesForm::ShowVoices);
    connect(family_, &QComboBox::currentIndexChanged, this, &TPatchesForm::ShowVoices);
}

void TPatchesForm::AddFileButtons() {
    AddCloseButton(*this, language_);
    auto* import = new QPushButton(Say(instrument_texts::kImport));
    import->setObjectName(QStringLiteral("Btn_ImportVoices"));
    import->setAutoDefault(false);
    auto* save = new QPushButton(Say(instrument_texts::kExport));
    save->setObjectName(QStringLiteral("Btn_ExportVoices"));
    save->setAutoDefault(false);
    auto* row = static_cast<QHBoxLayout*>(layout()->itemAt(layout()->count() - 1)->layout());
    row->insertWidget(0, import);
    row->insertWidget(1, save);
    connect(import, &QPushButton::clicked, this, &TPatchesForm::Import);
    connect(save, &QPushButton::clicked, this, &TPatchesForm::Export);
}

void TPatchesForm::ShowProblems() {
    QStringList problems;
    for (const std::string& problem : tables_.Problems(instrument_, language_)) {
        problems << ToQString(problem);
    }
    ShowLine(*message_, problems.join(u'\n'));
}

void TPatchesForm::ShowFamilies() {
    const QSignalBlocker silent(family_);
    family_->clear();
    family_->addItem(Say(instrument_texts::kAllFamilies), QString());
    const VoiceList list = instruments::VoicesOf(tables_, instrument_, options_);
    const auto add = [this](std::span<const Voice* const> voices, const QString& shown) {
        for (const Voice* voice : voices) {
            const QString family = ToQString(voice->family);
            if (family_->findData(family) < 0) {
                family_->addItem(shown.arg(family), family);
            }
        }
    };
    add(list.Own(), QStringLiteral("%1"));
    add(list.Inherited(), Say(instrument_texts::kInheritedFamily));
}

void TPatchesForm::ShowVoices() {
    const std::string words = search_->text().toStdString();
    const std::string family = family_->currentData().toString().toStdString();
    const VoiceList list = instruments::SearchVoices(tables_, instrument_, words, options_);
    std::vector<Row> rows;
    const auto add = [&](std::span<const Voice* const> voices) {
        const std::size_t before = rows.size();
        for (const Voice* voice : voices) {
            if (family.empty() || voice->family == family) {
                rows.push_back(VoiceRow(*voice));
            }
        }
        return NumberText(static_cast<std::int64_t>(rows.size() - before), language_);
    };
    const QString own = add(list.Own());
    const std::size_t ownRows = rows.size();
    const QString inherited = add(list.Inherited());
    const QString counts = Say(instrument_texts::kVoiceCounts).arg(own, inherited);
    const bool onlyOwn = rows.size() == ownRows;
    const bool nothing = rows.empty();
    list_->SetRows(std::move(rows), onlyOwn ? own : counts);
    ShowLine(*nothing_, !nothing              ? QString()
                        : list.voices.empty() ? Say(instrument_texts::kNoVoice)
                                              : Say(instrument_texts::kNoVoiceInFamily));
}

void TPatchesForm::Import() {
    const auto file = program_.files.open(this);
    if (!file) {
        return;
    }
    try {
        TakeImport(*file);
    } catch (const instruments::VoiceFileError& error) {
        ShowLine(*message_,
                 ShownFileName(*file) + QStringLiteral(": ") + ToQString(error.Message(language_)));
    } catch (const std::exception& error) {
        ShowLine(*message_,
                 Say(instrument_texts::kImportFailed).arg(ToQString(DisplayText(error.what()))));
    }
}

void TPatchesForm::TakeImport(const std::filesystem::path& file) {
    const std::vector<ImportedTable> tables = instruments::ImportVoiceFile(file);
    const ImportedTable* picked = Pick(this, tables, Say(instrument_texts::kWhichModel));
    if (picked == nullptr ||
        !instruments::StoreUserTable(tables_, instrument_, picked->table, host_)) {
        return;
    }
    ShowFamilies();
    ShowVoices();
    const auto count = static_cast<std::int64_t>(picked->table.Voices().size());
    ShowLine(*message_, Say(instrument_texts::kImported)
                            .arg(NumberText(count, language_), ToQString(picked->modelName)));
    emit TableChanged();
}

void TPatchesForm::Export() {
    const auto file = program_.files.save(this, instruments::TableFileName(Instrument()));
    if (!file) {
        return;
    }
    const std::string text = instruments::VoiceTableText(
        CopyOf(instruments::VoicesOf(tables_, instrument_, options_).voices));
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const bool written = system::WriteFileAtomically(*file, {bytes, text.size()}).outcome ==
                         system::WriteOutcome::Written;
    ShowLine(*message_, Say(written ? instrument_texts::kExported : instrument_texts::kExportFailed)
                            .arg(ShownPath(*file)));
}

} // namespace tracksmith::forms
