#include "app/forms/revoicer/revoice_folder_form.h"

#include <utility>

#include "base/forms/dialog_frame.h"
#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/forms/revoicer/folder_texts.h"

namespace tracksmith::forms {
namespace {

const Text& WordsOf(app::FolderFault fault) {
    switch (fault) {
        case app::FolderFault::NoSource:
            return folder_texts::kNoSource;
        case app::FolderFault::NoTarget:
            return folder_texts::kNoTarget;
        case app::FolderFault::SameFolder:
            return folder_texts::kSameFolder;
        default:
            return folder_texts::kTargetInSource;
    }
}

} // namespace

RevoiceFolderForm::RevoiceFolderForm(RevoiceFolderActions actions, Language language,
                                     QWidget* parent)
    : QDialog(parent), actions_(std::move(actions)), language_(language) {
    setObjectName(QStringLiteral("Dlg_RevoiceFolder"));
    setAttribute(Qt::WA_DeleteOnClose);
    AddColumn(*this);
    auto& column = static_cast<QVBoxLayout&>(*layout());
    title_ = NewLabel("Lbl_RevoiceFolderTitle", this);
    title_->setFont(ScaledFont(title_->font(), 1.4));
    title_->setWordWrap(true);
    ShowInstrument(actions_.order());
    QLabel* purpose = NewLabel("Lbl_RevoiceFolderPurpose", this);
    purpose->setText(Say(folder_texts::kPurpose));
    purpose->setWordWrap(true);
    column.addWidget(title_);
    column.addWidget(purpose);
    BuildFolders(column);
    BuildResult(column);
    BuildFooter(column);
    connect(&worker_, &FolderWorker::Found, this, &RevoiceFolderForm::TakeFound);
    connect(&worker_, &FolderWorker::Done, this, &RevoiceFolderForm::TakeResult);
    connect(&worker_, &FolderWorker::Progressed, progress_,
            [this](std::size_t done) { progress_->setValue(static_cast<int>(done)); });
    resize(fontMetrics().height() * 40, fontMetrics().height() * 26);
    ShowState();
}

QString RevoiceFolderForm::Say(const Text& text) const {
    return InLanguage(text, language_);
}

QPushButton* RevoiceFolderForm::AddButton(const char* name, const Text& text) {
    auto* button = new QPushButton(Say(text));
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    return button;
}

QLineEdit* RevoiceFolderForm::AddFolder(QGridLayout& grid, int row, const Text& label,
                                        const char* names) {
    auto* field = new QLineEdit;
    field->setObjectName(QLatin1String(names));
    field->setAccessibleName(PlainMenuText(Say(label)));
    auto* caption = new QLabel(Say(label));
    caption->setBuddy(field);
    grid.addWidget(caption, row, 0);
    grid.addWidget(field, row, 1);
    connect(field, &QLineEdit::textChanged, this, &RevoiceFolderForm::ShowState);
    return field;
}

void RevoiceFolderForm::BuildFolders(QVBoxLayout& column) {
    auto* grid = new QGridLayout;
    grid->setSpacing(Gap());
    source_ = AddFolder(*grid, 0, folder_texts::kSource, "Edit_FolderSource");
    chooseSource_ = AddButton("Btn_ChooseSource", folder_texts::kChooseSource);
    chooseSource_->setAccessibleName(Say(folder_texts::kSourceTitle));
    grid->addWidget(chooseSource_, 0, 2);
    target_ = AddFolder(*grid, 1, folder_texts::kTarget, "Edit_FolderTarget");
    chooseTarget_ = AddButton("Btn_ChooseTarget", folder_texts::kChooseTarget);
    chooseTarget_->setAccessibleName(Say(folder_texts::kTargetTitle));
    grid->addWidget(chooseTarget_, 1, 2);
    column.addLayout(grid);
    addBanks_ = new QCheckBox(Say(folder_texts::kAddBanks));
    addBanks_->setObjectName(QStringLiteral("Chk_FolderAddBanks"));
    addBanks_->setToolTip(Say(folder_texts::kAddBanksHint));
    column.addWidget(addBanks_);
    connect(chooseSource_, &QPushButton::clicked, this, &RevoiceFolderForm::ChooseSource);
    connect(chooseTarget_, &QPushButton::clicked, this, &RevoiceFolderForm::ChooseTarget);
    connect(source_, &QLineEdit::editingFinished, this, &RevoiceFolderForm::ProposeTarget);
}

void RevoiceFolderForm::BuildResult(QVBoxLayout& column) {
    progress_ = new QProgressBar;
    progress_->setObjectName(QStringLiteral("Bar_RevoiceFolder"));
    progress_->setAccessibleName(Say(folder_texts::kProgress));
    progress_->setFormat(QStringLiteral("%v / %m"));
    state_ = NewLabel("Lbl_RevoiceFolderState", this);
    state_->setWordWrap(true);
    remarks_ = new QListWidget;
    remarks_->setObjectName(QStringLiteral("List_RevoiceRemarks"));
    remarks_->setAccessibleName(Say(folder_texts::kRemarks));
    remarks_->setWordWrap(true);
    remarks_->setAlternatingRowColors(true);
    column.addWidget(progress_);
    column.addWidget(state_);
    column.addWidget(remarks_, 1);
}

void RevoiceFolderForm::BuildFooter(QVBoxLayout& column) {
    start_ = AddButton("Btn_RevoiceFolderStart", folder_texts::kStart);
    start_->setDefault(true);
    cancel_ = AddButton("Btn_RevoiceFolderCancel", folder_texts::kCancel);
    QPushButton* close = AddButton("Btn_Close", folder_texts::kClose);
    auto* row = new QHBoxLayout;
    row->setSpacing(Gap());
    row->addStretch(1);
    row->addWidget(start_);
    row->addWidget(cancel_);
    row->addWidget(close);
    column.addLayout(row);
    connect(start_, &QPushButton::clicked, this, &RevoiceFolderForm::Start);
    connect(cancel_, &QPushButton::clicked, this, &RevoiceFolderForm::Cancel);
    connect(close, &QPushButton::clicked, this, &RevoiceFolderForm::close);
}

QString RevoiceFolderForm::Source() const {
    return source_->text().trimmed();
}

QString RevoiceFolderForm::Target() const {
    return target_->text().trimmed();
}

void RevoiceFolderForm::SetFolders(const QString& source, const QString& target) {
    source_->setText(source);
    target_->setText(target);
}

void RevoiceFolderForm::ChooseSource() {
    if (const auto folder = actions_.chooseFolder(this, Say(folder_texts::kSourceTitle))) {
        source_->setText(PathToQString(*folder));
        ProposeTarget();
    }
}

void RevoiceFolderForm::ChooseTarget() {
    if (const auto folder = actions_.chooseFolder(this, Say(folder_texts::kTargetTitle))) {
        target_->setText(PathToQString(*folder));
    }
}

// A folder beside that of the songs, as long as the user has not named another.
void RevoiceFolderForm::ProposeTarget() {
    if (Source().isEmpty() || Target() != proposed_) {
        return;
    }
    std::filesystem::path folder = (PathFromQString(Source()) / "").parent_path();
    folder += PathFromQString(QStringLiteral(" - ") + instrument_);
    proposed_ = PathToQString(folder);
    target_->setText(proposed_);
}

QString RevoiceFolderForm::FaultWords(const app::FolderOrder& order) const {
    if (order.revoice.entries.empty()) {
        return Say(folder_texts::kEmptyTable);
    }
    const auto fault = app::FaultOf(order.source, order.target);
    return fault ? Say(WordsOf(*fault)) : QString();
}

void RevoiceFolderForm::ShowInstrument(const app::FolderOrder& order) {
    instrument_ = ToQString(order.options.outputs.outputs.front().name);
    setWindowTitle(Say(folder_texts::kTitle).arg(instrument_));
    title_->setText(windowTitle());
}

void RevoiceFolderForm::Start() {
    ProposeTarget();
    app::FolderOrder order = actions_.order();
    ShowInstrument(order); // the user may have chosen another one meanwhile
    order.source = PathFromQString(Source());
    order.target = PathFromQString(Target());
    order.revoice.addBanks = addBanks_->isChecked();
    remarks_->clear();
    const QString fault = FaultWords(order);
    if (!fault.isEmpty()) {
        Tell(fault);
        return;
    }
    progress_->setRange(0, 0);
    worker_.Find(std::move(order), actions_.tables, language_);
    Tell(Say(folder_texts::kLooking));
}

void RevoiceFolderForm::TakeFound(std::size_t songs, std::size_t existing) {
    const QPointer<RevoiceFolderForm> self(this); // a program that ends takes the window with it
    const bool replace =
        existing > 0 && actions_.ask(Say(folder_texts::kReplace).arg(existing).arg(songs));
    if (self == nullptr || !Busy()) {
        return;
    }
    progress_->setRange(0, static_cast<int>(songs));
    progress_->setValue(0);
    worker_.Run(replace);
    Tell(Say(folder_texts::kWorking));
}

void RevoiceFolderForm::Cancel() {
    worker_.Cancel();
    if (worker_.Busy()) {
        Tell(Say(folder_texts::kCancelling));
    }
    ShowState();
}

void RevoiceFolderForm::TakeResult(const std::optional<app::FolderResult>& result) {
    progress_->setRange(0, 1);
    if (!result) {
        progress_->reset();
        Tell(Say(folder_texts::kNoMemory));
        return;
    }
    progress_->setRange(0, static_cast<int>(worker_.Songs()));
    progress_->setValue(progress_->maximum());
    ShowRemarks(*result);
    Tell(ResultWords(*result));
    QApplication::alert(this);
}

QString RevoiceFolderForm::ResultWords(const app::FolderResult& result) const {
    const std::size_t looked = result.revoiced + result.unchanged + result.kept +
                               result.partly.size() + result.failed.size();
    QStringList lines;
    const auto line = [&](const Text& text, std::size_t count) {
        if (count > 0) {
            lines << Say(text).arg(NumberText(static_cast<std::int64_t>(count), language_));
        }
    };
    if (looked == 0 && !result.cancelled) {
        return Say(folder_texts::kNoSongs);
    }
    if (result.cancelled) {
        lines << Say(folder_texts::kCancelled);
    }
    lines << Say(folder_texts::kRevoiced)
                 .arg(NumberText(static_cast<std::int64_t>(result.revoiced), language_));
    line(folder_texts::kUnchanged, result.unchanged);
    line(folder_texts::kWithoutBank, result.withoutBank);
    line(folder_texts::kKept, result.kept);
    line(folder_texts::kPartly, result.partly.size());
    line(folder_texts::kFailed, result.failed.size());
    return lines.join(u'\n');
}

void RevoiceFolderForm::ShowRemarks(const app::FolderResult& result) {
    const auto source = PathFromQString(Source());
    for (const auto* list : {&result.failed, &result.partly}) {
        for (const app::FolderRemark& remark : *list) {
            const auto inside = remark.path.lexically_relative(source);
            const bool below = !inside.empty() && *inside.begin() != "..";
            remarks_->addItem(ShownPath(below ? inside : remark.path) + QStringLiteral(": ") +
                              ToQString(remark.words));
        }
    }
    if (remarks_->count() > 0) {
        remarks_->setCurrentRow(0);
    }
}

void RevoiceFolderForm::Tell(const QString& words) {
    state_->setText(words);
    ShowState();
}

void RevoiceFolderForm::ShowState() {
    const bool busy = Busy();
    for (QWidget* widget :
         {static_cast<QWidget*>(source_), static_cast<QWidget*>(target_),
          static_cast<QWidget*>(chooseSource_), static_cast<QWidget*>(chooseTarget_),
          static_cast<QWidget*>(addBanks_)}) {
        if (widget != nullptr) {
            widget->setEnabled(!busy);
        }
    }
    if (start_ != nullptr) { // while the window is built
        start_->setEnabled(!busy && !Source().isEmpty());
        cancel_->setEnabled(busy);
    }
}

// What becomes of the songs is told before the window goes.
void RevoiceFolderForm::closeEvent(QCloseEvent* event) {
    if (Busy()) {
        Cancel();
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}

void RevoiceFolderForm::reject() {
    if (Busy()) {
        Cancel();
    } else {
        QDialog::reject();
    }
}

} // namespace tracksmith::forms
