#include <algorithm>
#include <array>
#include <mutex>

#include "base/recording_message_host.h"
#include "support/temporary_folder.h"
#include <QComboBox>
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>

#include "app/backups/backup_folder.h"
#include "app/diff/compare_files.h"
#include "app/forms/form_fixture.h"
#include "app/save_song.h"
#include "editing/forms/number_field.h"
#include "editing/forms/range_form.h"
#include "instruments/forms/picker_form.h"
#include "midi/backends/winmm/driver.h"
#include "mixer/forms/control_slider.h"

// The window with the ports of Windows, which are those of the loop-back driver under Wine: a song
// from opening to saving.

namespace tracksmith::forms {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Short = std::array<std::uint8_t, 3>;

const std::string kPlain = "Loop Fl\xC3\xBCgel";
const std::string kSynthesizer = "Loop Steering";

/// What comes back at the input of the first loop.
class Arrivals {
public:
    Arrivals() {
        EXPECT_EQ(driver_.Open(0, &Arrivals::Take, this, handle_), midi::kNoError);
        EXPECT_EQ(driver_.Start(handle_), midi::kNoError);
    }
    Arrivals(const Arrivals&) = delete;
    Arrivals& operator=(const Arrivals&) = delete;
    ~Arrivals() {
        driver_.Stop(handle_);
        driver_.Close(handle_);
    }

    std::vector<Short> NotesOn() {
        const std::lock_guard lock(mutex_);
        std::vector<Short> notes;
        std::ranges::copy_if(messages_, std::back_inserter(notes), [](const Short& each) {
            return (each[0] & 0xF0) == 0x90 && each[2] > 0;
        });
        return notes;
    }
    bool Has(const Short& message) {
        const std::lock_guard lock(mutex_);
        return std::ranges::find(messages_, message) != messages_.end();
    }

private:
    static void Take(midi::DeviceHandle, std::uint32_t message, void* instance,
                     std::uintptr_t packed, std::uintptr_t) {
        if (message == midi::kInputData) {
            auto& self = *static_cast<Arrivals*>(instance);
            const std::lock_guard lock(self.mutex_);
            self.messages_.push_back({static_cast<std::uint8_t>(packed),
                                      static_cast<std::uint8_t>(packed >> 8U),
                                      static_cast<std::uint8_t>(packed >> 16U)});
        }
    }

    midi::WinmmInputDriver driver_;
    midi::DeviceHandle handle_ = 0;
    std::mutex mutex_;
    std::vector<Short> messages_;
};

class WindowsTest : public FormTest {
protected:
    void SetUp() override {
        FormTest::SetUp();
        if (form_->Session().Controls().Player().OutputDevices().size() != 2) {
            GTEST_SKIP() << "the ports are not those of the loop-back driver";
        }
        Trigger("MMF_OpenDemoSong");
        demo_ = Encoded();
    }
    std::unique_ptr<devices::MidiDevices> Devices() const override { return nullptr; }

    Bytes Encoded() const {
        RecordingMessageHost host(Language::English);
        const auto bytes = app::EncodeSong(form_->Session(), app::SaveFormat::AsSong, host);
        return {bytes.begin(), bytes.end()};
    }
    /// The notes that begin before `end`, with the channel in the status byte.
    std::vector<Short> NotesInSong(std::int32_t end) const {
        std::vector<Short> notes;
        for (const song::Track& track : form_->Session().Song().tracks) {
            for (song::ConstEventLink event = track.first; event; event = event->next) {
                if (event->IsChannelMessage() && event->Command() == song::kNoteOn &&
                    event->data2 > 0 && event->tick < end) {
                    notes.push_back({event->status, event->data1, event->data2});
                }
            }
        }
        return notes;
    }
    void ChooseOutput(const std::string& name) const {
        auto* box = Find<QComboBox>("CB_Output");
        const int index = box->findData(ToQString(name));
        ASSERT_GE(index, 0) << name;
        box->setCurrentIndex(index);
        emit box->activated(index);
    }
    /// Gives a channel the voice that is found by these words.
    void PickVoice(std::size_t channel, const char* words) const {
        form_->PickVoice(channel);
        auto* picker = form_->findChild<TPickerForm*>();
        ASSERT_TRUE(QTest::qWaitForWindowActive(picker));
        auto* search = Find<QLineEdit>("E_SelectSoundName");
        QTest::keyClicks(search, QLatin1String(words));
        QTest::keyClick(search, Qt::Key_Down);
        QTest::keyClick(search, Qt::Key_Return);
    }
    void TypeMeasure(const char* field, const char* text) const {
        auto* line = Find<NumberField>(field);
        line->setFocus();
        line->selectAll();
        QTest::keyClicks(line, QLatin1String(text));
    }

    Bytes demo_;
};

TEST_F(WindowsTest, TheSystemsSynthesizerIsTheUsualOutputAndNothingIsBuiltIn) {
    EXPECT_EQ(Find<QComboBox>("CB_Output")->currentData().toString().toStdString(), kSynthesizer);
    Trigger("MMS_MidiPorts");
    Find<QComboBox>("CB_DialogOutput");
    EXPECT_EQ(form_->findChild<QWidget*>(QStringLiteral("TB_SynthVolume")), nullptr);
}

TEST_F(WindowsTest, TheDemoSongIsPlayedChangedAndSaved) {
    constexpr std::int32_t kTwoMeasures = 2 * 3 * 480;
    Arrivals arrivals;
    ChooseOutput(kPlain);
    std::vector<Short> expected = NotesInSong(kTwoMeasures);
    ASSERT_GT(expected.size(), 15U);
    Trigger("MMP_PlayStop");
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return arrivals.NotesOn().size() > expected.size(); }, 20'000));
    auto* volume = Find<ControlSlider>("TB_Volume00");
    const int former = volume->value();
    volume->setValue(41);
    EXPECT_TRUE(QTest::qWaitFor([&] { return arrivals.Has({0xB0, 7, 41}); }));
    Trigger("MMP_PlayStop");
    std::vector<Short> heard = arrivals.NotesOn();
    heard.resize(std::min(heard.size(), expected.size()));
    std::ranges::sort(heard); // what begins together has no order
    std::ranges::sort(expected);
    EXPECT_EQ(heard, expected);

    Trigger("MMP_MoveToStart");
    PickVoice(3, "ocarina");
    chooser_->answer = PathFromQString(folder_.path()) / u"Gr\u00FC\u00DFe.mid";
    Trigger("MMF_SaveMidifileAs");
    EXPECT_FALSE(form_->Session().Modified());
    const Bytes saved = test::FileBytes(*chooser_->answer);
    EXPECT_EQ(saved, Encoded());
    RecordingMessageHost host(Language::English);
    const auto found = diff::CompareFiles(
        {std::make_shared<const Bytes>(demo_), std::make_shared<const Bytes>(saved), {}, false, 0},
        host);
    std::string rows;
    for (const diff::Difference& row : found->differences.rows) {
        rows += std::to_string(row.channel) + (row.kind == diff::Kind::Voice ? " voice " : " ") +
                std::to_string(row.control) + ": " + std::to_string(row.before & 0xFF) + " " +
                std::to_string(row.after & 0xFF) + "\n";
    }
    EXPECT_EQ(rows, "0 7: " + std::to_string(former) + " 41\n3 voice 0: 73 79\n");
}

TEST_F(WindowsTest, ACutIsUndoneAndABackupRestored) {
    Trigger("MME_RangeDelete");
    TypeMeasure("E_SourceFromMeasure", "3");
    TypeMeasure("E_SourceToMeasure", "5");
    form_->findChild<RangeForm*>()->findChild<QPushButton*>(QStringLiteral("Btn_Ok"))->click();
    const Bytes cut = Encoded();
    EXPECT_LT(cut.size(), demo_.size());
    EXPECT_TRUE(form_->AgreeToEnd(false)); // unanswered, so it is backed up
    const auto backups = backups::BackupFolder(backups::UsualBackupFolder()).List().backups;
    ASSERT_EQ(backups.size(), 1U);
    EXPECT_EQ(test::FileBytes(backups.front().file), cut);
    {
        BoxAnswer yes("Btn_Yes");
        Trigger("MME_Undo");
    }
    EXPECT_EQ(Encoded(), demo_);
    BoxAnswer discard("Btn_Discard");
    Trigger("MMF_RestoreEarlier");
    auto* table = Find<QTableWidget>("Table_Backups");
    ASSERT_EQ(table->rowCount(), 1);
    QTest::keyClick(table, Qt::Key_Return);
    EXPECT_EQ(Encoded(), cut);
}

} // namespace
} // namespace tracksmith::forms
