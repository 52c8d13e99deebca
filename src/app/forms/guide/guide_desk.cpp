#include "app/forms/guide/guide_desk.h"

#include <string>
#include <utility>

#include "base/data_folders.h"
#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include "app/forms/guide/guide_form.h"
#include "app/forms/guide/guide_sections.h"
#include "app/forms/guide/texts.h"

namespace tracksmith::forms {
namespace {

bool IsHelpKey(const QEvent& event) {
    if (event.type() != QEvent::KeyPress && event.type() != QEvent::ShortcutOverride) {
        return false;
    }
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier;
}

// A window that blocks all others does not block its own.
QWidget* ParentForNow() {
    QWidget* modal = QApplication::activeModalWidget();
    return modal != nullptr && modal->windowModality() == Qt::ApplicationModal ? modal : nullptr;
}

} // namespace

GuideDesk::GuideDesk(std::function<Language()> language, QObject* parent)
    : QObject(parent), language_(std::move(language)) {
    QCoreApplication::instance()->installEventFilter(this);
}

GuideDesk::~GuideDesk() {
    delete window_.data();
}

GuideForm& GuideDesk::Window() {
    QWidget* parent = ParentForNow();
    if (window_ != nullptr && window_->parentWidget() != parent) {
        delete window_.data();
    }
    if (window_ == nullptr) {
        window_ = new GuideForm(
            [](Language language) {
                return FindDocument(std::string(guide_texts::kFile.In(language)));
            },
            language_(), parent);
    }
    return *window_;
}

void GuideDesk::Show() {
    GuideForm& window = Window();
    window.show();
    window.raise();
    window.activateWindow();
}

void GuideDesk::ShowAbout(const QWidget* widget) {
    const Text& section = GuideSectionOf(widget);
    Window().ShowSection(section);
    Show();
}

void GuideDesk::Retranslate(Language language) {
    if (window_ != nullptr) {
        window_->Retranslate(language);
    }
}

// The key's override is taken, so that it comes here wherever the focus is and the menu's command
// is only for the mouse.
bool GuideDesk::eventFilter(QObject* watched, QEvent* event) {
    auto* widget = IsHelpKey(*event) ? qobject_cast<QWidget*>(watched) : nullptr;
    if (widget == nullptr) {
        return false;
    }
    event->accept();
    if (event->type() == QEvent::KeyPress) {
        ShowAbout(widget);
    }
    return true;
}

} // namespace tracksmith::forms
