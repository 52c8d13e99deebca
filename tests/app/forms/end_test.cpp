#include <new>

#include "base/system/interrupt.h"
#include <QTest>

#include "app/forms/application.h"
#include "app/forms/form_fixture.h"
#include "app/forms/settings/end_watch.h"

namespace tracksmith::forms {
namespace {

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

TEST_F(EndTest, ARequestSilencesTheInstrumentAndAsksNothing) {
    const EndWatch watch(*form_);
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    Trigger("MMP_TempoUp");
    loop_->SetRecording(0, true);
    Trigger("MMP_PlayStop");
    QTimer::singleShot(50, &system::InterruptWatch::Request);
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
