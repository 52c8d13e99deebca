#include "base/forms/screen_fit.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QFileDialog>
#include <QInputDialog>
#include <QLayout>
#include <QMessageBox>
#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

namespace tracksmith::forms {
namespace {

// Qt lays these out itself, and bounds them.
bool IsQtDialog(const QDialog& dialog) {
    return qobject_cast<const QMessageBox*>(&dialog) != nullptr ||
           qobject_cast<const QFileDialog*>(&dialog) != nullptr ||
           qobject_cast<const QInputDialog*>(&dialog) != nullptr;
}

/// Takes less than its contents need, and tells the dialog what they want.
class ContentsArea : public QScrollArea {
public:
    explicit ContentsArea(QWidget* page) {
        setObjectName(QStringLiteral("ContentsArea"));
        setFrameShape(QFrame::NoFrame);
        setWidgetResizable(true);
        setWidget(page);
        setFocusPolicy(Qt::NoFocus);
    }
    QSize sizeHint() const override { return widget()->sizeHint(); }
    QSize minimumSizeHint() const override { return {0, 0}; }
};

// Everything in the dialog moves into an area that scrolls.
void LetScroll(QDialog& dialog) {
    const QPointer<QWidget> focus = dialog.focusWidget();
    auto* page = new QWidget;
    page->setLayout(dialog.layout()); // takes the dialog's contents along
    auto* area = new ContentsArea(page);
    auto* column = new QVBoxLayout(&dialog);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(area);
    area->show();
    if (focus != nullptr) {
        focus->setFocus();
    }
}

void Fit(QDialog& dialog) {
    QLayout* contents = dialog.layout();
    if (contents == nullptr || IsQtDialog(dialog)) {
        return;
    }
    const QSize least = contents->totalMinimumSize();
    const QSize room = FittingSize(dialog, least);
    if (room != least) {
        const QSize former = dialog.size();
        LetScroll(dialog);
        dialog.setMinimumSize(0, 0);
        dialog.resize(FittingSize(dialog, former.expandedTo(least)));
    } else if (const QSize fitting = FittingSize(dialog, dialog.size()); fitting != dialog.size()) {
        dialog.resize(fitting);
    }
}

} // namespace

QSize FittingSize(const QWidget& window, QSize wanted) {
    // Before a window is shown nobody knows its frame.
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
    const QSize shown = window.frameSize() - window.size();
    const QSize frame = shown.height() > 0 ? shown : QSize(0, title);
    return wanted.boundedTo(window.screen()->availableSize() - frame);
}

ScreenFit::ScreenFit(QObject* parent) : QObject(parent) {
    qApp->installEventFilter(this);
}

// What changes while a dialog is open can make it larger, too. A layout that has just done so is
// still at work.
bool ScreenFit::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    const bool mayGrow = type == QEvent::LayoutRequest || type == QEvent::Resize;
    auto* dialog = type == QEvent::Show || mayGrow ? qobject_cast<QDialog*>(watched) : nullptr;
    if (dialog == nullptr || (mayGrow && !dialog->isVisible())) {
        return QObject::eventFilter(watched, event);
    }
    if (mayGrow && FittingSize(*dialog, dialog->size()) != dialog->size()) {
        QTimer::singleShot(0, dialog, [dialog] { Fit(*dialog); });
    } else if (type != QEvent::Resize) {
        Fit(*dialog);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tracksmith::forms
