#pragma once

#include <functional>
#include <vector>

#include "base/forms/panel.h"
#include "base/text.h"
#include <QString>

#include "app/session/workspace.h"

class QLabel;
class QPushButton;
class QToolButton;

namespace tracksmith::forms {

class ElidedLabel;

/// The bar for what the user should know but need not answer: one line, the buttons that lead on,
/// one that closes it. A newer notice covers the older ones, which come out again when it is
/// closed, so that none is lost unread. Hidden while there is nothing to say.
class NoticeBar : public Panel {
    Q_OBJECT

public:
    explicit NoticeBar(QWidget* parent = nullptr);

    /// Tells what loading and preparing changed in the song, if anything; instead of all that was
    /// said about the song before. `canTakeBack` and `canInsertLeadIn` add the buttons for it.
    void ShowChanges(const session::Workspace& workspace, bool canTakeBack, bool canInsertLeadIn);

    /// Takes away all notices that are about the song.
    void Clear();

    /// Tells that a setting needs a reload and offers it.
    void ShowReloadOffer();
    /// Likewise that the file was changed by somebody else.
    void ShowChangedOnDisk(const QString& fileName);

    /// Offers the backup of a song, called `song`, that the user could not save when the program
    /// ended last. Stays until it is answered.
    void ShowRestoreOffer(const QString& song, const QString& date);
    /// It has been answered.
    void DropRestoreOffer();

    /// Shows one line without a button that leads on.
    void ShowText(const Text& text);
    /// Likewise for a composed line, which keeps its language.
    void ShowPlain(const QString& line);

    void Retranslate(Language language);

signals:
    void DetailsPressed();
    void ReloadPressed();
    void TakeBackPressed();
    void LeadInPressed();
    void RestorePressed();

private:
    /// What a notice is about; a newer one on the same subject takes its place.
    enum class Subject { Song, Reload, Backup, Other };
    struct Notice {
        Subject subject = Subject::Other;
        std::function<QString(Language)> text;
        bool details = false;
        bool reload = false;
        bool takeBack = false;
        bool leadIn = false;
        bool restore = false;
    };

    QPushButton* AddButton(const char* objectName, void (NoticeBar::*signal)());
    void Add(Notice notice);
    void Forget(Subject subject);
    void CloseShown();
    void Render();

    std::vector<Notice> notices_;
    Language language_ = Language::English;
    ElidedLabel* text_;
    QLabel* waiting_;
    QPushButton* details_;
    QPushButton* leadIn_;
    QPushButton* takeBack_;
    QPushButton* reload_;
    QPushButton* restore_;
    QToolButton* close_;
};

} // namespace tracksmith::forms
