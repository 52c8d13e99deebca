#include <csignal>
#include <new>

#include <QProcess>
#include <QTest>

#include "app/forms/application.h"
#include "app/forms/form_fixture.h"
#include "app/forms/settings/end_watch.h"

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

class EndTest : public FormTest {};

// Wherever in the window it happens, the program goes on.
TEST_F(EndTest, MemoryThatRunsOutIsToldAndPasses) {
    auto* application = dynamic_cast<Application*>(QCoreApplication::instance());
    ASSERT_NE(application, nullptr);
    application->SetOutOfMemoryHandler([this] { form_->TellOutOfMemory(); });
    const BoxAnswer ok("Btn_Ok");
    for (int i = 0; i < 2; ++i) { // told once
        QMetaObject::invokeMethod(
            form_.get(), [] { throw std::bad_alloc(); }, Qt::QueuedConnection);
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return !ok.text.empty(); }));
    application->SetOutOfMemoryHandler({});
}

TEST_F(EndTest, ASignalSilencesTheInstrumentAndAsksNothing) {
    const EndWatch watch(*form_);
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    Trigger("MMP_TempoUp");
    loop_->SetRecording(0, true);
    Trigger("MMP_PlayStop");
    QTimer::singleShot(50, [] { std::raise(SIGHUP); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_FALSE(form_->Session().Controls().Playing());
    const std::vector<std::uint8_t> notesOff{0xB2, 123, 0};
    int found = 0;
    for (const midi::loop::LoopMessage& message : loop_->TakeSent(0)) {
        found += message.bytes == notesOff ? 1 : 0;
    }
    EXPECT_GT(found, 0);
    EXPECT_TRUE(store_->KeyInUserRegistry("Geometry"));
}

TEST_F(EndTest, TheEndOfTheSessionAsksOnce) {
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    Trigger("MMP_TempoUp");
    {
        const BoxAnswer stay("Btn_Cancel");
        EXPECT_FALSE(form_->AgreeToEnd(true));
    }
    EXPECT_FALSE(store_->KeyInUserRegistry("Geometry"));
    {
        const BoxAnswer leave("Btn_Discard");
        EXPECT_TRUE(form_->AgreeToEnd(true));
    }
    EXPECT_TRUE(form_->AgreeToEnd(true)); // not asked again
    // The session goes on after all and the song is changed once more.
    Trigger("MMP_TempoUp");
    const BoxAnswer stay("Btn_Cancel");
    EXPECT_FALSE(form_->close());
}

} // namespace
} // namespace tracksmith::forms
