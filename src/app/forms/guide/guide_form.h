#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "base/text.h"
#include <QWidget>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace tracksmith::forms {

class GuideText;

/// The window with the user guide: contents at the left, search, back and forward.
class GuideForm : public QWidget {
    Q_OBJECT

public:
    /// Finds the guide in a language; nothing where it is missing, which the window then says.
    using Finder = std::function<std::optional<std::filesystem::path>(Language)>;

    GuideForm(Finder find, Language language, QWidget* parent);

    /// Goes to the section with that heading, if there is one, else stays.
    void ShowSection(const Text& heading);

    /// The guide in another language, at the same section.
    void Retranslate(Language language);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void BuildTop(QHBoxLayout& row);
    void AddKeys();
    void ReadGuide();
    void FillContents();
    void Visit(int heading);
    void GoBack();
    void GoForward();
    void ShowPlace();
    void ShowWhere();
    void FollowLink(const QString& link);
    void Search(bool backward);

    Finder find_;
    Language language_;
    /// The headings that were visited, and which of them is shown.
    std::vector<int> visited_;
    std::size_t place_ = 0;

    GuideText* text_ = nullptr;
    QListWidget* contents_ = nullptr;
    QPushButton* back_ = nullptr;
    QPushButton* forward_ = nullptr;
    QLineEdit* search_ = nullptr;
    QLabel* found_ = nullptr;
};

} // namespace tracksmith::forms
