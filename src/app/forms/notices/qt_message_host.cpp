#include "app/forms/notices/qt_message_host.h"

#include "base/forms/qt_text.h"
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>

#include "app/forms/texts.h"

namespace tracksmith::forms {
namespace {

/// A message box shows the ordinary pointer, also when a command in progress shows the waiting one.
class OrdinaryCursor {
public:
    OrdinaryCursor() { QGuiApplication::setOverrideCursor(Qt::ArrowCursor); }
    OrdinaryCursor(const OrdinaryCursor&) = delete;
    OrdinaryCursor& operator=(const OrdinaryCursor&) = delete;
    ~OrdinaryCursor() { QGuiApplication::restoreOverrideCursor(); }
};

class Box : public QMessageBox {
public:
    Box(QMessageBox::Icon icon, const QString& text, Language language, QWidget* window)
        : QMessageBox(icon, InLanguage(texts::kProgram, language), {}, NoButton, window),
          language_(language) {
        setObjectName(QStringLiteral("MessageBox"));
        setTextFormat(Qt::PlainText);
        setText(text);
    }

    QPushButton* Add(const Text& label, const char* name, ButtonRole role) {
        QPushButton* button = addButton(InLanguage(label, language_), role);
        button->setObjectName(QLatin1String(name));
        return button;
    }

    /// Shows the box; the button that the user pressed, `escape` when the box was closed.
    QAbstractButton* Ask(QPushButton* preset, QPushButton* escape) {
        setDefaultButton(preset);
        setEscapeButton(escape);
        const OrdinaryCursor cursor;
        exec();
        return clickedButton();
    }

private:
    Language language_;
};

} // namespace

void QtMessageHost::ShowMessage(std::string_view text) {
    Box box(QMessageBox::Warning, ToQString(text), language_, &window_);
    auto* ok = box.Add(texts::kOk, "Btn_Ok", QMessageBox::AcceptRole);
    box.Ask(ok, ok);
}

bool QtMessageHost::AskYesNo(std::string_view question) {
    Box box(QMessageBox::Question, ToQString(question), language_, &window_);
    auto* yes = box.Add(texts::kYes, "Btn_Yes", QMessageBox::YesRole);
    auto* no = box.Add(texts::kNo, "Btn_No", QMessageBox::NoRole);
    return box.Ask(no, no) == yes;
}

bool QtMessageHost::AskWayOn(std::string_view text, const Text& way) {
    return AskWayOn(text, way, texts::kClose);
}

bool QtMessageHost::AskWayOn(std::string_view text, const Text& way, const Text& other) {
    Box box(QMessageBox::Warning, ToQString(text), language_, &window_);
    auto* on = box.Add(way, "Btn_WayOn", QMessageBox::AcceptRole);
    auto* close = box.Add(other, "Btn_Close", QMessageBox::RejectRole);
    return box.Ask(on, close) == on;
}

QtMessageHost::SaveAnswer QtMessageHost::AskSaveChanges(const QString& fileName) {
    Box box(QMessageBox::Question, texts::SaveChangesQuestion(fileName, language_), language_,
            &window_);
    auto* save = box.Add(texts::kSaveButton, "Btn_Save", QMessageBox::AcceptRole);
    auto* discard = box.Add(texts::kDiscard, "Btn_Discard", QMessageBox::DestructiveRole);
    auto* cancel = box.Add(texts::kCancel, "Btn_Cancel", QMessageBox::RejectRole);
    const QAbstractButton* pressed = box.Ask(save, cancel);
    return pressed == save      ? SaveAnswer::Save
           : pressed == discard ? SaveAnswer::Discard
                                : SaveAnswer::Cancel;
}

} // namespace tracksmith::forms
