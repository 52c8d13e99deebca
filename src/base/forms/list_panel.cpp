#include "base/forms/list_panel.h"

#include "base/forms/flat_header.h"
#include "base/forms/labels.h"
#include "base/forms/panel.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QHeaderView>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

namespace tracksmith::forms {

ListPanel::ListPanel(const char* objectName, const Text& title, std::vector<RowsColumn> columns,
                     int wideColumn, QWidget* parent)
    : QWidget(parent),
      title_(title),
      caption_(NewCaption("", this)),
      model_(new RowsModel(std::move(columns), this)),
      table_(new QTableView) {
    BuildTable(objectName, wideColumn);
    caption_->setBuddy(table_);
    auto* panel = new Panel(QPalette::Base, this);
    auto* inside = new QVBoxLayout(panel);
    const int margin = static_cast<int>(CornerRadius() / 2) + 1;
    inside->setContentsMargins(margin, margin, margin, margin);
    inside->addWidget(table_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Gap() / 3);
    layout->addWidget(caption_);
    layout->addWidget(panel);
    connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (current.isValid() && model_->RowAt(current.row()).tick >= 0) {
                    emit PlaceChosen(model_->RowAt(current.row()).tick);
                }
            });
}

void ListPanel::BuildTable(const char* objectName, int wideColumn) {
    table_->setObjectName(QLatin1String(objectName));
    table_->setModel(model_);
    table_->setFrameShape(QFrame::NoFrame);
    table_->setShowGrid(false);
    table_->setWordWrap(false);
    table_->setTabKeyNavigation(false);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setCornerButtonEnabled(false);
    table_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table_->verticalHeader()->setDefaultSectionSize(table_->fontMetrics().height() * 3 / 2);
    auto* header = new FlatHeader(table_);
    table_->setHorizontalHeader(header);
    header->setSectionResizeMode(QHeaderView::Interactive);
    header->setSectionResizeMode(wideColumn, QHeaderView::Stretch);
}

void ListPanel::SetRows(std::vector<Row> rows, const QString& count) {
    count_ = count;
    model_->SetRows(std::move(rows));
    table_->resizeColumnsToContents();
    ShowTitle();
}

void ListPanel::Retranslate(Language language) {
    language_ = language;
    model_->Retranslate(language);
    table_->setAccessibleName(InLanguage(title_, language));
    table_->resizeColumnsToContents();
    ShowTitle();
}

void ListPanel::ShowTitle() {
    caption_->setText(InLanguage(title_, language_) + QStringLiteral("  ") +
                      (count_.isEmpty() ? NumberText(model_->rowCount(), language_) : count_));
}

} // namespace tracksmith::forms
