#include <chrono>
#include <filesystem>
#include <iostream>
#include <string_view>
#include <utility>
#include <vector>

#include "base/forms/qt_text.h"
#include "base/system/console.h"
#include "base/system/crash_watch.h"
#include "base/system/single_start.h"
#include <QAction>
#include <QApplication>
#include <QCommandLineParser>
#include <QDialog>
#include <QIcon>
#include <QSize>
#include <QTimer>

#include "app/backups/backup_folder.h"
#include "app/components.h"
#include "app/forms/application.h"
#include "app/forms/main_form.h"
#include "app/forms/settings/end_watch.h"
#include "app/forms/settings/start_watch.h"
#include "app/settings/settings_store.h"

using namespace tracksmith;

namespace {

// Paints the window, or the dialog over it, into a picture file for documents and ends the program.
void TakeScreenshot(forms::TMainForm& form, const QString& picture) {
    // The song is loaded, laid out and plays by then.
    constexpr std::chrono::milliseconds kSettled{1'000};
    QTimer::singleShot(kSettled, &form, [&form, picture] {
        QWidget* shown = QApplication::activeWindow();
        for (QWidget* window : QApplication::topLevelWidgets()) {
            // A window that does not block the others need not be the active one.
            if ((shown == nullptr || shown == &form) && window->isVisible() &&
                qobject_cast<QDialog*>(window) != nullptr) {
                shown = window;
            }
        }
        QApplication::exit((shown != nullptr ? *shown : form).grab().save(picture) ? 0 : 1);
    });
}

QIcon ProgramIcon() {
    QIcon icon;
    for (const char* size : {"64", "256"}) {
        icon.addFile(QStringLiteral(":/icons/" TRACKSMITH_ID "-%1.png").arg(QLatin1String(size)));
    }
    return icon;
}

// What the command line wishes.
struct Wishes {
    std::vector<std::filesystem::path> songs;
    /// The measure to play from; 0 for none.
    int playFrom = 0;
    /// Object name of a command to call at last.
    QString command;
    QString picture;
    /// Empty for the size that the window had last.
    QSize size;
};

// These two are answered where there is no screen, too.
bool IsVersionWish(std::string_view argument) {
    return argument == "--version" || argument == "-v";
}
bool IsHelpWish(std::string_view argument) {
    return argument == "--help" || argument == "-h";
}

Wishes ReadArguments(const QCoreApplication& application) {
    QCommandLineParser arguments;
    arguments.addHelpOption();
    // Told by main; here for the help.
    arguments.addOption({{QStringLiteral("v"), QStringLiteral("version")},
                         QStringLiteral("Show version, components and licences, and quit.")});
    arguments.addPositionalArgument(
        QStringLiteral("song.mid"),
        QStringLiteral("Standard MIDI File to open; more of them go to the recent files."),
        QStringLiteral("[song.mid...]"));
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
    const QCommandLineOption size(QStringLiteral("size"),
                                  QStringLiteral("Make the window so large."),
                                  QStringLiteral("widthxheight"));
    arguments.addOption(size);
    arguments.process(application);
    const QStringList sides = arguments.value(size).split(u'x');
    std::vector<std::filesystem::path> songs;
    for (const QString& song : arguments.positionalArguments()) {
        songs.push_back(forms::PathFromQString(song));
    }
    return {std::move(songs),
            arguments.value(play).toInt(),
            arguments.value(show),
            arguments.value(screenshot),
            {sides.value(0).toInt(), sides.value(1).toInt()}};
}

void FulfilLater(forms::TMainForm& form, const Wishes& wishes) {
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

void Fulfil(forms::TMainForm& form, const Wishes& wishes) {
    if (!wishes.songs.empty()) {
        form.OpenMidiFiles(wishes.songs, [&](bool) { FulfilLater(form, wishes); });
        return;
    }
    if (form.WantsStartPage()) {
        form.MMF_FirstStepsClick();
    }
    FulfilLater(form, wishes);
}

// Whoever paints pictures or calls a command at the start wants a window of its own.
bool GoesToOpenWindow(const system::SingleStart& start, const Wishes& wishes) {
    return !start.First() && wishes.picture.isEmpty() && wishes.command.isEmpty() &&
           wishes.playFrom == 0 && start.HandOver(wishes.songs);
}

} // namespace

int main(int argc, char** argv) {
    system::JoinParentConsole();
    if (argc == 2 && IsVersionWish(argv[1])) {
        std::cout << app::VersionText("tracksmith " TRACKSMITH_VERSION, app::Program::Windows,
                                      Language::English)
                  << std::endl;
        return 0;
    }
    if (argc == 2 && IsHelpWish(argv[1])) {
        const QCoreApplication console(argc, argv);
        ReadArguments(console); // ends the program
    }
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    forms::Application application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tracksmith"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TRACKSMITH_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral(TRACKSMITH_ID));
    QGuiApplication::setWindowIcon(ProgramIcon());
    const Wishes wishes = ReadArguments(application);
    system::SingleStart start(TRACKSMITH_ID);
    if (GoesToOpenWindow(start, wishes)) {
        return 0;
    }

    const system::CrashWatch crashes(backups::UsualBackupFolder());
    settings::SettingsStore store;
    forms::TMainForm form(store);
    const forms::EndWatch endWatch(form);
    const forms::StartWatch startWatch(form, start);
    application.SetOutOfMemoryHandler([&form] { form.TellOutOfMemory(); });
    if (!wishes.size.isEmpty()) {
        form.resize(wishes.size);
    }
    form.show();
    // The window is seen before a song is read.
    QTimer::singleShot(0, &form, [&form, &wishes] { Fulfil(form, wishes); });
    if (!wishes.picture.isEmpty()) {
        TakeScreenshot(form, wishes.picture);
    }
    return QApplication::exec();
}
