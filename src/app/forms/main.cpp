#include <chrono>

#include "base/forms/qt_text.h"
#include <QAction>
#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>

#include "app/forms/main_form.h"
#include "app/settings/settings_store.h"

using namespace tracksmith;

namespace {

// Paints the window, or the dialog over it, into a picture file for documents and ends the program.
void TakeScreenshot(forms::TMainForm& form, const QString& picture) {
    // The song is loaded, laid out and plays by then.
    constexpr std::chrono::milliseconds kSettled{1'000};
    QTimer::singleShot(kSettled, &form, [&form, picture] {
        QWidget* dialog = QApplication::activeModalWidget();
        QWidget& shown = dialog != nullptr ? *dialog : form;
        QApplication::exit(shown.grab().save(picture) ? 0 : 1);
    });
}

} // namespace

int main(int argc, char** argv) {
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tracksmith"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TRACKSMITH_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("tracksmith"));
    QCommandLineParser arguments;
    arguments.addHelpOption();
    arguments.addVersionOption();
    arguments.addPositionalArgument(QStringLiteral("song.mid"),
                                    QStringLiteral("Standard MIDI File to open."),
                                    QStringLiteral("[song.mid]"));
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        QStringLiteral("Paint the window into the picture <file> and quit."),
        QStringLiteral("file"));
    arguments.addOption(screenshot);
    const QCommandLineOption play(QStringLiteral("play"),
                                  QStringLiteral("Play the song from <measure> on."),
                                  QStringLiteral("measure"));
    arguments.addOption(play);
    const QCommandLineOption show(QStringLiteral("show"),
                                  QStringLiteral("Call the menu <command> by its object name."),
                                  QStringLiteral("command"));
    arguments.addOption(show);
    arguments.process(application);

    settings::SettingsStore store;
    forms::TMainForm form(store);
    form.show();
    const QStringList files = arguments.positionalArguments();
    if (!files.isEmpty()) {
        // The window is seen before the song is read.
        const int measure = arguments.value(play).toInt();
        const QString command = arguments.value(show);
        QTimer::singleShot(0, &form, [&form, &files, measure, command] {
            form.OpenMidiFile(forms::PathFromQString(files.constFirst()));
            if (measure > 0 && form.Session().HasSong()) {
                form.Session().Controls().MoveByMeasures(measure - 1);
                form.MMP_PlayStopClick();
            }
            auto* action = command.isEmpty() ? nullptr : form.findChild<QAction*>(command);
            if (action != nullptr) {
                action->trigger();
            }
        });
    }
    if (arguments.isSet(screenshot)) {
        TakeScreenshot(form, arguments.value(screenshot));
    }
    return QApplication::exec();
}
