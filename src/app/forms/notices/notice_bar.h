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

    /// What can be done about what loading and preparing did.
    struct WaysOn {
        bool takeBack = false;
        bool leadIn = false;
        /// The song is not prepared for the user's instrument but could be.
        bool prepare = false;
    };
    /// Tells what loading took away and what preparing changed in the song, or that it was not
    /// prepared, if anything; instead of all that was said about the song before.
    void ShowChanges(const session::Workspace& workspace, const WaysOn& ways);

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

    /// Tells that the program crashed and where the record of it lies. Stays until it is closed.
    void ShowCrash(const QString& record);

    /// Shows why something was refused that will be possible again after EndRefusal.
    void ShowRefusal(const Text& reason);
    void EndRefusal();

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
    void PreparePressed();
    void RestorePressed();

private:
    /// What a notice is about; a newer one on the same subject takes its place.
    enum class Subject { Song, Reload, Refusal, Backup, Crash, Other };
    struct Notice {
        Subject subject = Subject::Other;
        std::function<QString(Language)> text;
        bool details = false;
        bool reload = false;
        bool takeBack = false;
        bool leadIn = false;
        bool prepare = false;
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
    QPushButton* prepare_;
    QPushButton* takeBack_;
    QPushButton* reload_;
    QPushButton* restore_;
    QToolButton* close_;
};

} // namespace tracksmith::forms
