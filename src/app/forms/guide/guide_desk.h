#pragma once

#include <functional>

#include "base/text.h"
#include <QObject>
#include <QPointer>

class QWidget;

namespace tracksmith::forms {

class GuideForm;

/// Opens the user guide: from the menu at its beginning, by F1 anywhere in the program at the
/// section about what has the focus. There is one window of it.
class GuideDesk : public QObject {
    Q_OBJECT

public:
    /// `language` tells the one that is shown.
    explicit GuideDesk(std::function<Language()> language, QObject* parent = nullptr);
    ~GuideDesk() override;

    /// The guide at its beginning, or where it was left.
    void Show();

    /// The guide at the section about `widget`.
    void ShowAbout(const QWidget* widget);

    /// After another language was chosen.
    void Retranslate(Language language);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    GuideForm& Window();

    std::function<Language()> language_;
    QPointer<GuideForm> window_;
};

} // namespace tracksmith::forms
