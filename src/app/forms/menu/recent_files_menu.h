#pragma once

#include <filesystem>
#include <vector>

#include "base/text.h"
#include <QMenu>

namespace tracksmith::forms {

/// The menu of recent files: missing ones greyed, and an entry that clears the list.
class RecentFilesMenu : public QMenu {
    Q_OBJECT

public:
    explicit RecentFilesMenu(QWidget* parent = nullptr);

    void SetFiles(std::vector<std::filesystem::path> files);
    void Retranslate(Language language);

signals:
    void FileChosen(const std::filesystem::path& file);
    void ClearChosen();

private:
    void Fill();

    std::vector<std::filesystem::path> files_;
    Language language_ = Language::English;
};

} // namespace tracksmith::forms
