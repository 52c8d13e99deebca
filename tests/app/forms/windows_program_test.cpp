#include <windows.h>

#include "support/temporary_folder.h"
#include <QDir>
#include <QProcess>
#include <QTest>

#include "app/forms/form_fixture.h"

// The program itself as a process under Wine: how it starts and ends.

namespace tracksmith::forms {
namespace {

/// The settings are the program's own, so that this runs only where they are nobody's.
bool UnderWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

class ProgramTest : public FormTest {
protected:
    void SetUp() override {
        if (!UnderWine()) {
            GTEST_SKIP() << "would touch the user's settings";
        }
        store_ = std::make_unique<settings::SettingsStore>();
        store_->DeleteAllRegistry();
        store_->WriteBoolToUserRegistry("StartPage", false);
    }

    /// `platform` is Qt's: a program that is not drawn, or one with windows of Windows.
    void Start(QProcess& program, const QStringList& arguments,
               const char* platform = "offscreen") const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("APPDATA"), QDir::toNativeSeparators(folder_.path()));
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QLatin1String(platform));
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(TRACKSMITH_PROGRAM), arguments);
        ASSERT_TRUE(program.waitForStarted());
    }
    static void ExpectOrderlyEnd(QProcess& program) {
        ASSERT_TRUE(program.waitForFinished());
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), 0);
    }
    bool Opened(const std::filesystem::path& song) const {
        return QTest::qWaitFor(
            [&] {
                const QString folder = ToQString(store_->ReadStrFromUserRegistry("LastFolder", ""));
                return PathFromQString(folder) == song.parent_path();
            },
            20'000);
    }
    /// A song in a folder with a name of its own.
    std::filesystem::path Song(const std::filesystem::path& folder) const {
        const std::filesystem::path all = PathFromQString(folder_.path()) / folder;
        std::filesystem::create_directories(all);
        test::PutFile(all / "song.mid", Waltz());
        return (all / "song.mid").make_preferred();
    }
};

struct Windows {
    DWORD process = 0;
    std::vector<HWND> found;
};

std::vector<HWND> WindowsOf(DWORD process) {
    Windows windows{process, {}};
    EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
            auto& all = *reinterpret_cast<Windows*>(parameter);
            DWORD owner = 0;
            GetWindowThreadProcessId(window, &owner);
            if (owner == all.process) {
                all.found.push_back(window);
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&windows));
    return windows.found;
}

TEST_F(ProgramTest, ASecondStartGivesItsFilesToTheFirst) {
    const auto first = Song("one");
    const auto second = Song(std::u16string(u"H\u00F6hen \u2013 \u6B4C"));
    QProcess one;
    Start(one, {PathToQString(first)});
    ASSERT_TRUE(Opened(first));
    QProcess two;
    Start(two, {PathToQString(second)});
    ExpectOrderlyEnd(two);
    EXPECT_TRUE(Opened(second));
    EXPECT_EQ(one.state(), QProcess::Running);
    one.kill();
    EXPECT_TRUE(one.waitForFinished());
}

TEST_F(ProgramTest, TheEndOfTheSessionEndsItInOrder) {
    const auto song = Song("one");
    QProcess program;
    Start(program, {QStringLiteral("--play"), QStringLiteral("1"), PathToQString(song)}, "windows");
    ASSERT_TRUE(Opened(song));
    EXPECT_FALSE(store_->KeyInUserRegistry("Geometry"));
    const auto process = static_cast<DWORD>(program.processId());
    ASSERT_FALSE(WindowsOf(process).empty());
    for (const UINT message : {WM_QUERYENDSESSION, WM_ENDSESSION}) {
        for (HWND window : WindowsOf(process)) {
            DWORD_PTR answer = 0;
            SendMessageTimeoutW(window, message, TRUE, 0, SMTO_ABORTIFHUNG, 5'000, &answer);
            EXPECT_TRUE(message == WM_ENDSESSION || answer != 0);
        }
    }
    ExpectOrderlyEnd(program);
    EXPECT_TRUE(store_->KeyInUserRegistry("Geometry"));
}

TEST_F(ProgramTest, ACrashLeavesARecordThatTheNextStartTells) {
    const auto song = Song("one");
    QProcess program;
    Start(program, {PathToQString(song)});
    ASSERT_TRUE(Opened(song));
    HANDLE process =
        OpenProcess(PROCESS_ALL_ACCESS, FALSE, static_cast<DWORD>(program.processId()));
    ASSERT_NE(process, nullptr);
    // A thread that begins where nothing is.
    HANDLE thread = CreateRemoteThread(process, nullptr, 0,
                                       reinterpret_cast<LPTHREAD_START_ROUTINE>(std::uintptr_t{16}),
                                       nullptr, 0, nullptr);
    EXPECT_NE(thread, nullptr);
    CloseHandle(thread);
    CloseHandle(process);
    ASSERT_TRUE(program.waitForFinished(120'000)); // Wine looks for the symbols of all libraries
    EXPECT_NE(program.exitCode(), 0);
    const auto folder = Path("Tracksmith") / "AutoBackups";
    std::filesystem::path record;
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
        record = file.path().extension() == ".dmp" ? file.path() : record;
    }
    ASSERT_FALSE(record.empty());
    const auto bytes = test::FileBytes(record);
    ASSERT_GT(bytes.size(), 1000U);
    EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 4), "MDMP");

    QProcess next;
    Start(next, {QStringLiteral("--screenshot"), PathToQString(Path("window.png"))});
    ExpectOrderlyEnd(next);
    EXPECT_EQ(store_->ReadStrFromUserRegistry("CrashTold", ""), record.filename().string());
}

} // namespace
} // namespace tracksmith::forms
