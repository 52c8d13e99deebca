#pragma once

#include <vector>

#include "base/forms/rows_model.h"
#include "base/text.h"
#include <QString>
#include <QWidget>

class QLabel;
class QTableView;

namespace tracksmith::forms {

/// A titled read-only table in a panel.
class ListPanel : public QWidget {
    Q_OBJECT

public:
    /// `objectName` becomes the table's name; `wideColumn` takes the width that is left over.
    ListPanel(const char* objectName, const Text& title, std::vector<RowsColumn> columns,
              int wideColumn, QWidget* parent = nullptr);

    /// `count` stands behind the title in place of the number of rows.
    void SetRows(std::vector<Row> rows, const QString& count = {});

    /// Title, headers and accessible name in `language`; the rows are the caller's.
    void Retranslate(Language language);

signals:
    /// The user went to a row that has a place in the song.
    void PlaceChosen(std::int32_t tick);

private:
    void BuildTable(const char* objectName, int wideColumn);
    void ShowTitle();

    Text title_;
    QString count_;
    Language language_ = Language::English;
    QLabel* caption_;
    RowsModel* model_;
    QTableView* table_;
};

} // namespace tracksmith::forms
