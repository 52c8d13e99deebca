#pragma once

#include <QTreeWidget>

namespace tracksmith::forms {

/// A list of groups of voices with the number of hits at the right, headings between them. The rows
/// are counted without the headings.
class PickerGroups : public QTreeWidget {
    Q_OBJECT

public:
    explicit PickerGroups(const char* objectName, QWidget* parent = nullptr);

    /// Takes all rows away, for AddHeading and AddGroup.
    void Clear();
    void AddHeading(const QString& text);
    /// Adds a row; dimmed without hits.
    void AddGroup(const QString& name, const QString& hits, bool dimmed);
    /// Shows a row as the chosen one, without a signal.
    void Choose(std::size_t row);

signals:
    /// The user has chosen a row.
    void Chosen(std::size_t row);

private:
    QList<QTreeWidgetItem*> rows_;
};

} // namespace tracksmith::forms
