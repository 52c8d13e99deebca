#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "base/message_host.h"
#include "base/text.h"
#include <QDialog>
#include <QTimer>

#include "app/session/session.h"
#include "editing/foresight.h"
#include "editing/forms/carried_words.h"
#include "editing/forms/listening.h"
#include "editing/range_tools.h"
#include "editing/seam_picture.h"

class QHBoxLayout;
class QLabel;
class QLayout;
class QPushButton;
class QVBoxLayout;

namespace tracksmith::forms {

class FigureLines;
class FlowLayout;
class PositionFields;
class RangeOverview;

/// What the windows for ranges need of the program around them.
struct RangeFormActions {
    /// Carries out an edit and shows what it did; false when it was refused, which has been told.
    std::function<bool(const std::function<void()>& edit)> run;
    /// Shows the window of another tool in place of this one, with the same range.
    std::function<void(editing::RangeTool tool, const editing::RangeWish& wish)> open;
    /// What a channel (0-15) plays.
    std::function<QString(std::size_t channel)> voiceName;
    VoiceByNumbers nameVoice;
    std::function<QString()> songName;
    /// Says what was done; the number stands behind the text.
    std::function<void(const Text& done, std::int64_t number)> tell;
    /// What transposing must know of the mixer and the instrument.
    std::function<void(editing::Transposing&)> completeTransposing;
};

/// The common part of the windows in which a range of measures is chosen, with what the tool would
/// do to it. Nothing is changed until the user says so. User-interface thread.
class RangeForm : public QDialog {
    Q_OBJECT

public:
    /// All references must outlive the window.
    RangeForm(session::Session& session, editing::RangeTools& tools, MessageHost& host,
              RangeFormActions actions, QWidget* parent);

    virtual editing::RangeTool Tool() const = 0;

    /// What stands in the fields.
    editing::RangeWish Wish() const;
    void ShowWish(const editing::RangeWish& wish);

    /// Puts the beat of the music's place into a field.
    void TakePlayhead(editing::RangeReading::Field field);
    /// The music has moved.
    void ShowPlace();
    /// The song has been changed.
    void ShowSong();
    /// Playing has begun or ended.
    void ShowPlaying(bool playing);

    /// Plays what the tool would make, or ends that.
    void Preview();

    void done(int result) override;

    /// Carries the tool out; the window closes when it is done.
    void Btn_OkClick();
    void Btn_CancelClick() { reject(); }
    /// A beat has been changed: the range is looked at anew.
    void E_SourceFromBeatChange() { Validate(); }
    void E_SourceToBeatChange() { Validate(); }
    void E_DestBeatChange() { Validate(); }

protected:
    /// The tool's own part between the header and the buttons; called once by Start.
    virtual void BuildPositions(FlowLayout& row) = 0;
    virtual void BuildDetails(QHBoxLayout& row) = 0;
    /// Whether the tool can do what stands in the fields.
    virtual editing::RangeReading Check() const = 0;
    virtual editing::Foresight Foresee() const = 0;
    virtual void ShowForesight(const editing::Foresight& foresight) = 0;
    virtual void ShowNothing() = 0;
    /// What Preview plays of the changed song, and how it is called.
    virtual editing::SeamSpan HeardSpan(const editing::Foresight& foresight) const = 0;
    virtual Text PreviewText() const = 0;
    /// Where the music is in the changed song; less than 0 while that is not played.
    virtual void ShowHeardPlace(std::int32_t tick) = 0;
    /// How the button that carries out names it.
    virtual QString ActText(const editing::RangeFigures& figures) const = 0;
    /// Changes the song.
    virtual void ProcessData() = 0;

    /// Builds the window; the last step of making one.
    void Start(const char* objectName, const Text& title, const Text& purpose,
               const editing::RangeWish& wish);

    /// Looks at the fields again, and soon at what would happen.
    void Validate();

    QString Say(const Text& text) const;
    Language CurrentLanguage() const { return host_.CurrentLanguage(); }
    PositionFields* AddPosition(QLayout& row, const char* name, const Text& caption,
                                editing::RangeReading::Field field);

    session::Session& Owner() const { return session_; }
    editing::RangeTools& Tools() const { return tools_; }
    MessageHost& Host() const { return host_; }
    const RangeFormActions& Actions() const { return actions_; }
    RangeOverview& Now() const { return *now_; }
    RangeOverview& After() const { return *after_; }
    FigureLines& Figures() const { return *figures_; }

private:
    void BuildHeader(QVBoxLayout& column, const Text& title, const Text& purpose);
    void BuildOverviews(QVBoxLayout& column);
    void BuildFooter(QVBoxLayout& column);
    PositionFields* FieldsOf(editing::RangeReading::Field field) const;
    void UseLoop();
    void BeginPreview();
    void ShowPreview();
    void HearAnew(const editing::Foresight& foresight);
    void Look();
    void ShowFault(const editing::RangeReading& reading);
    void ShowRange(const editing::RangeReading& reading);

    session::Session& session_;
    editing::RangeTools& tools_;
    MessageHost& host_;
    RangeFormActions actions_;
    QTimer soon_;
    PositionFields* from_ = nullptr;
    PositionFields* to_ = nullptr;
    PositionFields* destination_ = nullptr;
    QLabel* fault_ = nullptr;
    RangeOverview* now_ = nullptr;
    RangeOverview* after_ = nullptr;
    FigureLines* figures_ = nullptr;
    QPushButton* preview_ = nullptr;
    QPushButton* ok_ = nullptr;
    Listening listening_;
    bool done_ = false;
};

} // namespace tracksmith::forms
