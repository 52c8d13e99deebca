#pragma once

#include "base/forms/panel.h"
#include "base/text.h"

#include "app/workspace.h"

class QPushButton;
class QToolButton;

namespace tracksmith::forms {

class ElidedLabel;

/// The bar for what the user should know but need not answer: one line, one button that leads on,
/// one that closes it. Hidden while there is nothing to say.
class NoticeBar : public Panel {
    Q_OBJECT

public:
    explicit NoticeBar(QWidget* parent = nullptr);

    /// Tells what loading and preparing changed in the workspace's song; hides the bar when that is
    /// nothing.
    void ShowChanges(const app::Workspace& workspace);

    /// Hides the bar.
    void Clear();

    /// Tells that a setting needs a reload and offers it.
    void ShowReloadOffer();

    /// Shows one line without a button that leads on.
    void ShowText(const Text& text);
    /// Likewise for a composed line, which keeps its language.
    void ShowPlain(const QString& line);

    void Retranslate(Language language);

signals:
    void DetailsPressed();
    void ReloadPressed();

private:
    QString ShownText() const;
    void Render();

    enum class Kind { None, Changes, Reload, Fixed, Plain };

    Kind kind_ = Kind::None;
    song::LoadReport report_;
    instruments::PreparationReport preparation_;
    Text fixed_{Both{""}};
    QString plain_;
    Language language_ = Language::English;
    ElidedLabel* text_;
    QPushButton* details_;
    QPushButton* reload_;
    QToolButton* close_;
};

} // namespace tracksmith::forms
