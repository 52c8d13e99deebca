#include "app/forms/menu/recent_files_menu.h"

#include <system_error>

#include "base/forms/qt_text.h"

#include "app/forms/texts.h"

namespace tracksmith::forms {

RecentFilesMenu::RecentFilesMenu(QWidget* parent) : QMenu(parent) {
    setObjectName(QStringLiteral("Menu_Recent"));
    // Files come and go between two looks at the menu.
    connect(this, &QMenu::aboutToShow, this, &RecentFilesMenu::Fill);
}

void RecentFilesMenu::SetFiles(std::vector<std::filesystem::path> files) {
    files_ = std::move(files);
    Fill();
}

void RecentFilesMenu::Retranslate(Language language) {
    language_ = language;
    Fill();
}

void RecentFilesMenu::Fill() {
    clear();
    int number = 0;
    for (const auto& file : files_) {
        // The digit is the entry's key.
        const QString label = QStringLiteral("&%1  %2").arg(QString::number(++number % 10),
                                                            MenuText(ShownPath(file)));
        QAction* action = addAction(label, this, [this, file] { emit FileChosen(file); });
        std::error_code ignored;
        action->setEnabled(std::filesystem::is_regular_file(file, ignored));
    }
    if (files_.empty()) {
        addAction(InLanguage(texts::kNoRecent, language_))->setEnabled(false);
        return;
    }
    addSeparator();
    addAction(InLanguage(texts::kClearRecent, language_), this, &RecentFilesMenu::ClearChosen)
        ->setObjectName(QStringLiteral("MMF_ClearRecent"));
}

} // namespace tracksmith::forms
