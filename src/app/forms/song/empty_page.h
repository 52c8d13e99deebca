#pragma once

#include <filesystem>
#include <vector>

#include "base/text.h"
#include <QWidget>

class QLabel;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace tracksmith::forms {

class Panel;

/// What the window shows while no song is open: the ways to get one.
class EmptyPage : public QWidget {
    Q_OBJECT

public:
    explicit EmptyPage(QWidget* parent = nullptr);

    /// The recent files to offer, newest first; the list is hidden when there are none.
    void SetRecentFiles(std::vector<std::filesystem::path> files);

    void Retranslate(Language language);

signals:
    void OpenPressed();
    void DemoPressed();
    void FileChosen(const std::filesystem::path& file);

private:
    void BuildList();
    void FillList();
    void ChooseItem(const QListWidgetItem* item);

    std::vector<std::filesystem::path> files_;
    Language language_ = Language::English;
    QLabel* title_;
    QLabel* hint_;
    QPushButton* open_;
    QPushButton* demo_;
    QLabel* caption_;
    Panel* listPanel_;
    QListWidget* list_;
};

} // namespace tracksmith::forms
