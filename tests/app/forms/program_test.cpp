#include <csignal>

#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include "app/forms/form_fixture.h"

namespace tracksmith::forms {
namespace {

/// The program itself as a process, with settings of its own.
class ProgramTest : public FormTest {
protected:
    void SetUp() override {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), folder_.path());
        environment.insert(QStringLiteral("XDG_DATA_HOME"), folder_.path());
        program_.setProcessEnvironment(environment);
    }

    void Start(const QStringList& arguments) {
        program_.start(QStringLiteral(TRACKSMITH_PROGRAM), arguments);
        ASSERT_TRUE(program_.waitForStarted());
    }
    void ExpectOrderlyEnd() {
        ASSERT_TRUE(program_.waitForFinished());
        EXPECT_EQ(program_.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program_.exitCode(), 0);
    }
    /// Whether the settings of the program have a value.
    bool Stored(const char* name) const {
        for (const auto& file : std::filesystem::recursive_directory_iterator(Path(""))) {
            if (file.path().extension() == ".json") {
                std::ifstream text(file.path());
                const std::string all(std::istreambuf_iterator<char>(text), {});
                return all.find(name) != std::string::npos;
            }
        }
        return false;
    }

    QProcess program_;
};

TEST_F(ProgramTest, ASignalEndsItInOrderWhilePlaying) {
    const auto song = PathToQString(Write("waltz.mid", Waltz()));
    Start({QStringLiteral("--play"), QStringLiteral("1"), song});
    ASSERT_TRUE(QTest::qWaitFor([&] { return Stored("LastMidifilesList"); }, 20'000));
    EXPECT_FALSE(Stored("Geometry"));
    ::kill(static_cast<pid_t>(program_.processId()), SIGTERM);
    ExpectOrderlyEnd();
    EXPECT_TRUE(Stored("Geometry"));
}

TEST_F(ProgramTest, PlaysNothingWhenTheFileIsRefused) {
    const auto picture = PathToQString(Path("window.png"));
    const auto song = PathToQString(Write("noise.mid", test::Bytes(100)));
    Start({QStringLiteral("--play"), QStringLiteral("2"), QStringLiteral("--screenshot"), picture,
           song});
    ExpectOrderlyEnd();
    EXPECT_TRUE(std::filesystem::exists(Path("window.png")));
}

TEST_F(ProgramTest, PaintsTheWindowOrWhatACommandOpensOverIt) {
    const auto sizeOf = [this](const QStringList& wishes) {
        Start(wishes + QStringList{QStringLiteral("--size"), QStringLiteral("1100x760"),
                                   QStringLiteral("--screenshot"),
                                   PathToQString(Path("window.png")),
                                   PathToQString(Write("waltz.mid", Waltz()))});
        ExpectOrderlyEnd();
        return QImage(PathToQString(Path("window.png"))).size();
    };
    EXPECT_EQ(sizeOf({}), QSize(1100, 760));
    const QSize about = sizeOf({QStringLiteral("--show"), QStringLiteral("MMF_About")});
    EXPECT_FALSE(about.isEmpty());
    EXPECT_LT(about.width(), 1100);
}

TEST_F(ProgramTest, ASecondStartGivesItsSongToTheFirst) {
    QProcessEnvironment environment = program_.processEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder_.path());
    program_.setProcessEnvironment(environment);
    Start({PathToQString(Write("waltz.mid", Waltz()))});
    ASSERT_TRUE(QTest::qWaitFor([&] { return Stored("waltz.mid"); }, 20'000));
    QProcess second;
    second.setProcessEnvironment(environment);
    second.start(QStringLiteral(TRACKSMITH_PROGRAM), {PathToQString(Write("other.mid", Waltz()))});
    ASSERT_TRUE(second.waitForFinished());
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Stored("other.mid"); }, 20'000));
    ::kill(static_cast<pid_t>(program_.processId()), SIGTERM);
    ExpectOrderlyEnd();
}

TEST_F(ProgramTest, TellsItsVersionLicencesAndOptionsWithoutAScreen) {
    QProcessEnvironment environment = program_.processEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.remove(QStringLiteral("DISPLAY"));
    program_.setProcessEnvironment(environment);
    const auto told = [this](const QString& option) {
        Start({option});
        ExpectOrderlyEnd();
        return QString::fromUtf8(program_.readAllStandardOutput());
    };
    const QString version = told(QStringLiteral("--version"));
    EXPECT_TRUE(
        version.contains(QRegularExpression(QStringLiteral("^tracksmith \\d+\\.\\d+\\.\\d+\n"))))
        << version.toStdString();
    EXPECT_TRUE(version.contains(QStringLiteral("\n  Qt: LGPL 3\n"))) << version.toStdString();
    const QString help = told(QStringLiteral("--help"));
    EXPECT_TRUE(help.contains(QStringLiteral("--play <measure>"))) << help.toStdString();
    EXPECT_EQ(told(QStringLiteral("-v")), version);
    EXPECT_EQ(told(QStringLiteral("-h")), help);
}

} // namespace
} // namespace tracksmith::forms
