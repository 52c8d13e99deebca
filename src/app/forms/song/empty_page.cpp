#include "app/forms/song/empty_page.h"

#include <algorithm>
#include <system_error>

#include "base/forms/labels.h"
#include "base/forms/panel.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/forms/menu/recent_files.h"
#include "app/forms/texts.h"

namespace tracksmith::forms {

EmptyPage::EmptyPage(QWidget* parent)
    : QWidget(parent),
      title_(NewLabel("Lbl_NoSong", this)),
      hint_(NewCaption("Lbl_DropHint", this)),
      open_(new QPushButton),
      demo_(new QPushButton),
      caption_(NewCaption("", this)),
      listPanel_(new Panel(QPalette::Base)),
      list_(new QListWidget) {
    open_->setObjectName(QStringLiteral("Btn_Open"));
    open_->setDefault(true);
    demo_->setObjectName(QStringLiteral("Btn_OpenDemo"));
    title_->setFont(ScaledFont(title_->font(), 1.8));
    for (QPushButton* button : {open_, demo_}) {
        button->setMinimumSize(fontMetrics().averageCharWidth() * 24, fontMetrics().height() * 2);
    }
    BuildList();
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(open_);
    buttons->addWidget(demo_);
    buttons->addStretch();
    auto* column = new QVBoxLayout;
    column->setSpacing(Gap());
    for (QWidget* widget : {title_, hint_}) {
        column->addWidget(widget);
    }
    column->addLayout(buttons);
    column->addSpacing(Gap() * 2);
    column->addWidget(caption_);
    column->addWidget(listPanel_);
    auto* middle = new QGridLayout(this);
    middle->addLayout(column, 1, 1);
    middle->setColumnStretch(0, 1);
    middle->setColumnStretch(2, 1);
    middle->setRowStretch(0, 1);
    middle->setRowStretch(2, 1);
    connect(open_, &QPushButton::clicked, this, &EmptyPage::OpenPressed);
    connect(demo_, &QPushButton::clicked, this, &EmptyPage::DemoPressed);
}

void EmptyPage::BuildList() {
    list_->setObjectName(QStringLiteral("List_Recent"));
    auto* inside = new QVBoxLayout(listPanel_);
    inside->setContentsMargins(Gap() / 2, Gap() / 2, Gap() / 2, Gap() / 2);
    inside->addWidget(list_);
    list_->setFrameShape(QFrame::NoFrame);
    list_->setSpacing(2);
    list_->setTextElideMode(Qt::ElideMiddle);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setMinimumWidth(fontMetrics().averageCharWidth() * 80);
    connect(list_, &QListWidget::itemActivated, this, &EmptyPage::ChooseItem);
    connect(list_, &QListWidget::itemClicked, this, &EmptyPage::ChooseItem);
}

void EmptyPage::SetRecentFiles(std::vector<std::filesystem::path> files) {
    files_ = std::move(files);
    FillList();
}

void EmptyPage::FillList() {
    list_->clear();
    for (const auto& file : files_) {
        auto* item = new QListWidgetItem(ShownPath(file), list_);
        item->setData(Qt::UserRole, list_->count() - 1);
        std::error_code ignored;
        if (!std::filesystem::is_regular_file(file, ignored)) {
            item->setText(item->text() + QStringLiteral(" – ") +
                          InLanguage(texts::kMissing, language_));
            item->setFlags(Qt::NoItemFlags);
        }
    }
    const int rows = std::max(1, static_cast<int>(files_.size()));
    const int spaced =
        std::max(list_->sizeHintForRow(0), fontMetrics().height()) + 2 * list_->spacing();
    list_->setFixedHeight(spaced * rows + 2 * list_->spacing());
    listPanel_->setHidden(files_.empty());
    caption_->setHidden(files_.empty());
}

void EmptyPage::ChooseItem(const QListWidgetItem* item) {
    const std::filesystem::path file =
        files_[static_cast<std::size_t>(item->data(Qt::UserRole).toInt())];
    if ((item->flags() & Qt::ItemIsEnabled) != 0) {
        emit FileChosen(file);
    }
}

void EmptyPage::Retranslate(Language language) {
    language_ = language;
    title_->setText(InLanguage(texts::kNoSong, language));
    hint_->setText(InLanguage(texts::kDropHint, language));
    open_->setText(InLanguage(texts::kOpen, language));
    demo_->setText(InLanguage(texts::kOpenDemo, language));
    caption_->setText(InLanguage(texts::kRecentFiles, language));
    list_->setAccessibleName(caption_->text());
    FillList();
}

} // namespace tracksmith::forms
