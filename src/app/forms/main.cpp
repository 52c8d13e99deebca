#include <chrono>

#include "base/forms/qt_text.h"
#include <QAction>
#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>

#include "app/forms/main_form.h"
#include "app/forms/settings/end_watch.h"
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

// What the command line wishes.
struct Wishes {
    QStringList songs;
    /// The measure to play from; 0 for none.
    int playFrom = 0;
    /// Object name of a command to call at last.
    QString command;
    QString picture;
};

Wishes ReadArguments(const QCoreApplication& application) {
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
    return {arguments.positionalArguments(), arguments.value(play).toInt(), arguments.value(show),
            arguments.value(screenshot)};
}

void Fulfil(forms::TMainForm& form, const Wishes& wishes) {
    if (!wishes.songs.isEmpty()) {
        form.OpenMidiFile(forms::PathFromQString(wishes.songs.constFirst()));
    }
    // A file that was refused has been told of.
    if (wishes.playFrom > 0 && form.Session().HasSong()) {
        form.Session().Controls().MoveByMeasures(wishes.playFrom - 1);
        form.MMP_PlayStopClick();
    }
    auto* action = wishes.command.isEmpty() ? nullptr : form.findChild<QAction*>(wishes.command);
    if (action != nullptr) {
        action->trigger();
    }
}

} // namespace

int main(int argc, char** argv) {
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tracksmith"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TRACKSMITH_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("tracksmith"));
    const Wishes wishes = ReadArguments(application);

    settings::SettingsStore store;
    forms::TMainForm form(store);
    const forms::EndWatch watch(form);
    form.show();
    // The window is seen before a song is read.
    QTimer::singleShot(0, &form, [&form, &wishes] { Fulfil(form, wishes); });
    if (!wishes.picture.isEmpty()) {
        TakeScreenshot(form, wishes.picture);
    }
    return QApplication::exec();
}
